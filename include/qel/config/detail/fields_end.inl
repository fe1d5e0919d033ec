// Included at the end of every list in fields/: the macros hold for one inclusion.
#undef ZEP_FIRST_FIELD
#undef ZEP_FIELD
