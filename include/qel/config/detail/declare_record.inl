// The members of the class ZEP_RECORD, whose fields are the list ZEP_FIELDS. Included between the braces of the class.
// Both macros are undefined at the end.
#if !defined(ZEP_RECORD) || !defined(ZEP_FIELDS)
#error "define ZEP_RECORD, the class, and ZEP_FIELDS, the file with its fields, before including declare_record.inl"
#endif

public:
    /// Initialises every field as `T{}`: optionals and containers empty, switches off, numbers zero. Throws at most
    /// std::bad_alloc.
    ZEP_RECORD();
    /// Copies a value into each field; the parameters are the fields in declaration order. Throws std::bad_alloc.
    // clang-format off
    ZEP_RECORD(
#define ZEP_FIRST_FIELD(name, ...) const __VA_ARGS__& name
#define ZEP_FIELD(name, ...) , const __VA_ARGS__& name
#include ZEP_FIELDS
    );
    // clang-format on
    ///@{
    /// Copies are deep and throw std::bad_alloc. Assignment goes field by field; if it fails, every field is valid, but
    /// some may be changed.
    ZEP_RECORD(const ZEP_RECORD&);
    ZEP_RECORD(ZEP_RECORD&&) noexcept;
    ZEP_RECORD& operator=(const ZEP_RECORD&);
    ZEP_RECORD& operator=(ZEP_RECORD&&) noexcept;
    ///@}
    ~ZEP_RECORD();

#define ZEP_FIELD(name, ...)                                                                                 \
    /** The field, to read or change. */                                                                     \
    __VA_ARGS__& name() noexcept;                                                                            \
    /** The field, to read. */                                                                               \
    const __VA_ARGS__& name() const noexcept;                                                                \
    /** Sets the field to a copy. Throws std::bad_alloc; the field is then still valid. */                   \
    void name(const __VA_ARGS__&);
#include ZEP_FIELDS

    ///@{
    /// `==`: whether all fields are equal.
    bool operator==(const ZEP_RECORD&) const noexcept;
    bool operator!=(const ZEP_RECORD&) const noexcept;
    ///@}
    ///@{
    /// `<` compares the fields in declaration order: the first that is less gives true, the first that is unequal
    /// otherwise gives false; all equal gives false. The others follow from this and `==` of the same operands.
    bool operator<(const ZEP_RECORD&) const noexcept;
    bool operator<=(const ZEP_RECORD&) const noexcept;
    bool operator>(const ZEP_RECORD&) const noexcept;
    bool operator>=(const ZEP_RECORD&) const noexcept;
    ///@}

    ZEP_CONFIG_QUIET_BEGIN
private:
#define ZEP_FIELD(name, ...) __VA_ARGS__ name##_{};
#include ZEP_FIELDS
    ZEP_CONFIG_QUIET_END

#undef ZEP_FIELDS
#undef ZEP_RECORD
