// Opens every list in fields/. Its rows are ZEP_FIELD(name, type): define that macro, then include the list.
// ZEP_FIRST_FIELD, if it is defined, takes the first row. Both are undefined at the end of the list.
#ifndef ZEP_FIELD
#error "define ZEP_FIELD(name, ...), and ZEP_FIRST_FIELD where the first row differs, before including a field list"
#endif
#ifndef ZEP_FIRST_FIELD
#define ZEP_FIRST_FIELD ZEP_FIELD
#endif
