// Opens every list in fields/: see there.
#ifndef ZEP_FIELD
#error "define ZEP_FIELD(name, ...), and ZEP_FIRST_FIELD where the first row differs, before including a field list"
#endif
#ifndef ZEP_FIRST_FIELD
#define ZEP_FIRST_FIELD ZEP_FIELD
#endif
