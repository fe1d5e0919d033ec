// Declares the class ZEP_RECORD with the fields of the list ZEP_FIELDS. Both macros are undefined at the end.
//
// Every field `f` of type T has `T& f()`, `const T& f() const` and the setter `void f(const T&)`, which copies.
// Getters throw nothing; a setter gives the strong guarantee as far as T's assignment does.

class ZEP_CONFIG_API ZEP_RECORD {
public:
    /// Every field as `T{}`: optionals and containers empty, switches off, numbers zero.
    ZEP_RECORD();
    /// All fields, in declaration order, each copied.
    // clang-format off
    ZEP_RECORD(
#define ZEP_FIRST_FIELD(name, ...) const __VA_ARGS__& name
#define ZEP_FIELD(name, ...) , const __VA_ARGS__& name
#include ZEP_FIELDS
    );
    // clang-format on
    ZEP_RECORD(const ZEP_RECORD&);
    ZEP_RECORD(ZEP_RECORD&&) noexcept;
    ZEP_RECORD& operator=(const ZEP_RECORD&);
    ZEP_RECORD& operator=(ZEP_RECORD&&) noexcept;
    ~ZEP_RECORD();

#define ZEP_FIELD(name, ...)                                                                                 \
    __VA_ARGS__& name() noexcept;                                                                            \
    const __VA_ARGS__& name() const noexcept;                                                                \
    void name(const __VA_ARGS__&);
#include ZEP_FIELDS

    /// All fields equal, tested in declaration order.
    bool operator==(const ZEP_RECORD&) const;
    bool operator!=(const ZEP_RECORD&) const;
    /// The first field decides that is less (true), or that is not equal (false). All equal gives false.
    bool operator<(const ZEP_RECORD&) const;
    bool operator<=(const ZEP_RECORD&) const;
    bool operator>(const ZEP_RECORD&) const;
    bool operator>=(const ZEP_RECORD&) const;

private:
#define ZEP_FIELD(name, ...) __VA_ARGS__ name##_{};
#include ZEP_FIELDS
};

#undef ZEP_FIELDS
#undef ZEP_RECORD
