// For each record a function that visits its fields. A pointer, so that nothing is converted to a record.
template <class Visit>
void visit_fields(const ZEP_RECORD* record, Visit& visit) {
#define ZEP_FIELD(name, ...) visit(#name, record->name());
#include ZEP_FIELDS
}

#undef ZEP_FIELDS
#undef ZEP_RECORD
