// Defines fields_of(const ZEP_RECORD*): a tuple of Field, made from the list ZEP_FIELDS; and name_of(const ZEP_RECORD*).
// Both macros are undefined at the end.
inline std::string name_of(const ZEP_RECORD*) {
    return ZEP_TEXT(ZEP_RECORD);
}
#define ZEP_FIELD_OF(name, ...)                                                                                        \
    Field<ZEP_RECORD, __VA_ARGS__> { #__VA_ARGS__, #name, &ZEP_RECORD::name, &ZEP_RECORD::name, &ZEP_RECORD::name }
inline auto fields_of(const ZEP_RECORD*) {
    return std::tuple{
#define ZEP_FIRST_FIELD(name, ...) ZEP_FIELD_OF(name, __VA_ARGS__)
#define ZEP_FIELD(name, ...) , ZEP_FIELD_OF(name, __VA_ARGS__)
#include ZEP_FIELDS
    };
}
#undef ZEP_FIELD_OF
#undef ZEP_FIELDS
#undef ZEP_RECORD
