// Defines a function that visits the fields of a record. It takes a pointer, so that no argument is converted to a
// record.
template <class Visit>
void visit_fields(const ZEP_RECORD* record, Visit& visit) {
#define ZEP_FIELD(name, ...) visit(#name, record->name());
#include ZEP_FIELDS
}

#undef ZEP_FIELDS
#undef ZEP_RECORD
