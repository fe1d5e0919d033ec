// One more in the list of the records' types. Both macros are undefined at the end.
, ZEP_RECORD
#undef ZEP_FIELDS
#undef ZEP_RECORD
