// Closes every list in fields/: the macros live for one inclusion.
#undef ZEP_FIRST_FIELD
#undef ZEP_FIELD
