// The members of the class ZEP_RECORD, whose fields are the list ZEP_FIELDS, to be included between its braces. Both
// macros are undefined at the end.
#if !defined(ZEP_RECORD) || !defined(ZEP_FIELDS)
#error "define ZEP_RECORD, the class, and ZEP_FIELDS, the file with its fields, before including declare_record.inl"
#endif

public:
    /// Every field as `T{}`: optionals and containers empty, switches off, numbers zero.
    /// Throws std::bad_alloc at most.
    ZEP_RECORD();
    /// All fields, in declaration order, each copied. Throws std::bad_alloc.
    // clang-format off
    ZEP_RECORD(
#define ZEP_FIRST_FIELD(name, ...) const __VA_ARGS__& name
#define ZEP_FIELD(name, ...) , const __VA_ARGS__& name
#include ZEP_FIELDS
    );
    // clang-format on
    ///@{
    /// Copies are deep and throw std::bad_alloc; an assignment goes field by field, and one that fails leaves
    /// every field valid. Moves throw nothing.
    ZEP_RECORD(const ZEP_RECORD&);
    ZEP_RECORD(ZEP_RECORD&&) noexcept;
    ZEP_RECORD& operator=(const ZEP_RECORD&);
    ZEP_RECORD& operator=(ZEP_RECORD&&) noexcept;
    ///@}
    ~ZEP_RECORD();

#define ZEP_FIELD(name, ...)                                                                                 \
    /** To read and to change. */                                                                            \
    __VA_ARGS__& name() noexcept;                                                                            \
    /** To read. */                                                                                          \
    const __VA_ARGS__& name() const noexcept;                                                                \
    /** Sets it to a copy. Throws std::bad_alloc; the field is then valid. */                                \
    void name(const __VA_ARGS__&);
#include ZEP_FIELDS

    ///@{
    /// All fields equal, tested in declaration order. Throws nothing.
    bool operator==(const ZEP_RECORD&) const;
    bool operator!=(const ZEP_RECORD&) const;
    ///@}
    ///@{
    /// The first field decides that is less (true), or that is not equal (false). All equal gives false. The
    /// others follow from this and `==` of the same operands. Throws nothing.
    bool operator<(const ZEP_RECORD&) const;
    bool operator<=(const ZEP_RECORD&) const;
    bool operator>(const ZEP_RECORD&) const;
    bool operator>=(const ZEP_RECORD&) const;
    ///@}

private:
#define ZEP_FIELD(name, ...) __VA_ARGS__ name##_{};
#include ZEP_FIELDS

#undef ZEP_FIELDS
#undef ZEP_RECORD
