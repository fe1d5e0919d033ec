// Included at the start of every list in fields/. To use a list, define ZEP_FIELD(name, type) for its rows, then
// include it. If ZEP_FIRST_FIELD is defined, it is used for the first row. The list undefines both at its end.
#ifndef ZEP_FIELD
#error "define ZEP_FIELD(name, ...), and ZEP_FIRST_FIELD where the first row differs, before including a field list"
#endif
#ifndef ZEP_FIRST_FIELD
#define ZEP_FIRST_FIELD ZEP_FIELD
#endif
