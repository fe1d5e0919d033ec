// Defines the members of the class ZEP_RECORD, whose fields are the list ZEP_FIELDS. Both macros are undefined at the
// end.
#if !defined(ZEP_RECORD) || !defined(ZEP_FIELDS)
#error "define ZEP_RECORD, the class, and ZEP_FIELDS, the file with its fields, before including define_record.inl"
#endif

ZEP_RECORD::ZEP_RECORD() = default;
// clang-format off
ZEP_RECORD::ZEP_RECORD(
#define ZEP_FIRST_FIELD(name, ...) const __VA_ARGS__& name
#define ZEP_FIELD(name, ...) , const __VA_ARGS__& name
#include ZEP_FIELDS
    )
#define ZEP_FIRST_FIELD(name, ...) : name##_(name)
#define ZEP_FIELD(name, ...) , name##_(name)
#include ZEP_FIELDS
{}
// clang-format on
ZEP_RECORD::ZEP_RECORD(const ZEP_RECORD&) = default;
ZEP_RECORD::ZEP_RECORD(ZEP_RECORD&&) noexcept = default;
ZEP_RECORD& ZEP_RECORD::operator=(const ZEP_RECORD&) = default;
ZEP_RECORD& ZEP_RECORD::operator=(ZEP_RECORD&&) noexcept = default;
ZEP_RECORD::~ZEP_RECORD() = default;

#define ZEP_FIELD(name, ...)                                                                                 \
    __VA_ARGS__& ZEP_RECORD::name() noexcept { return name##_; }                                             \
    const __VA_ARGS__& ZEP_RECORD::name() const noexcept { return name##_; }                                 \
    void ZEP_RECORD::name(const __VA_ARGS__& value) { name##_ = value; }
#include ZEP_FIELDS

bool ZEP_RECORD::operator==(const ZEP_RECORD& other) const noexcept {
#define ZEP_FIELD(name, ...)                                                                                 \
    if (!(name##_ == other.name##_)) return false;
#include ZEP_FIELDS
    return true;
}

// Not std::tie: a field that is neither less nor equal (the paths a//b and a/b) ends the comparison.
bool ZEP_RECORD::operator<(const ZEP_RECORD& other) const noexcept {
#define ZEP_FIELD(name, ...)                                                                                 \
    if (name##_ < other.name##_) return true;                                                                \
    if (!(name##_ == other.name##_)) return false;
#include ZEP_FIELDS
    return false;
}

// Derived in exactly this way, not by swapping the operands: for such a field the two differ.
bool ZEP_RECORD::operator!=(const ZEP_RECORD& other) const noexcept { return !(*this == other); }
bool ZEP_RECORD::operator<=(const ZEP_RECORD& other) const noexcept { return *this < other || *this == other; }
bool ZEP_RECORD::operator>(const ZEP_RECORD& other) const noexcept { return !(*this < other || *this == other); }
bool ZEP_RECORD::operator>=(const ZEP_RECORD& other) const noexcept { return !(*this < other); }

#undef ZEP_FIELDS
#undef ZEP_RECORD
