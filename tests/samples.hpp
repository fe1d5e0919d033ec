// The fields of every record as data, made from the field lists, with sample values, and values as text.
#pragma once

#include "qel/config/server_settings.hpp"
#include "qel/i18n/convert.hpp"

#include <boost/algorithm/string/replace.hpp>
#include <boost/date_time/posix_time/posix_time.hpp>

#include <string>
#include <tuple>
#include <type_traits>

namespace qel::config::test {

/// One field with its three accessors.
template <class R, class T>
struct Field {
    const char* type;
    const char* name;
    T& (R::*get)() noexcept;
    const T& (R::*read)() const noexcept;
    void (R::*set)(const T&);
};

#define ZEP_TEXT_OF(name) #name
#define ZEP_TEXT(name) ZEP_TEXT_OF(name)
#define ZEP_EACH_RECORD "../tests/fields_of.inl" // as seen from include/
#include "qel/config/detail/each_record.inl"
#undef ZEP_TEXT
#undef ZEP_TEXT_OF

template <class R>
constexpr const R* no_record = nullptr;

/// Calls visit(field) for every field of R in declaration order.
template <class R, class Visit>
void each_field(Visit visit) {
    std::apply([&](const auto&... field) { (visit(field), ...); }, fields_of(no_record<R>));
}

// clang-format off
/// The n-th value of T in ascending order; the one numbered 0 is what a default-constructed record holds. (Of
/// bool there are two; a nested record has the n-th value in every field.)
template <class T>
T sample(int n) {
    using std::is_same_v;
    if constexpr (is_same_v<T, Path>)                        return Path(std::u16string(static_cast<std::size_t>(n), u'a'));
    else if constexpr (is_same_v<T, char> || is_same_v<T, char16_t>) return 'a';
    else if constexpr (is_same_v<T, time_duration>)          return boost::posix_time::microseconds(n);
    else if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T>) return static_cast<T>(n);
    else if constexpr (requires(T pair) { pair.second; })
        return {sample<typename T::first_type>(n), sample<typename T::second_type>(n)};
    else if constexpr (requires(T optional) { optional.value(); })
        return n == 0 ? T() : T(sample<typename T::value_type>(n - 1));
    else if constexpr (requires { fields_of(no_record<T>); })
        return std::apply([n]<class... F>(const Field<T, F>&...) { return T(sample<F>(n)...); }, fields_of(no_record<T>));
    else {
        T result; // a container, or the TLS settings
        static_assert(is_same_v<T, SslContext> || requires { result.insert(result.end(), *result.begin()); },
                      "a field has a type without samples: add it here; if it is a record, add it to each_record.inl");
        if constexpr (is_same_v<T, SslContext>) result.cipher_list(sample<optional<std::string>>(n));
        else for (int i = 1; i <= n; ++i) result.insert(result.end(), sample<typename T::value_type>(i));
        return result;
    }
}

/// 'text', (pair or record, of which only what differs from the default), [container]. Separators are '/'.
template <class T>
std::string as_text(const T& value) {
    using std::is_same_v;
    if constexpr (is_same_v<T, bool>)                        return value ? "true" : "false";
    else if constexpr (is_same_v<T, std::string>)            return "'" + value + "'";
    else if constexpr (is_same_v<T, std::u16string>)         return as_text(i18n::ustring_to_utf8(value));
    else if constexpr (is_same_v<T, Path>)                   return boost::replace_all_copy(as_text(value.text()), "\\", "/");
    else if constexpr (is_same_v<T, time_duration>)          return boost::posix_time::to_simple_string(value);
    else if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T>) return std::to_string(static_cast<std::int64_t>(value));
    else if constexpr (requires { value.second; })           return "(" + as_text(value.first) + " " + as_text(value.second) + ")";
    else if constexpr (requires { value.value(); })          return value ? as_text(*value) : "none";
    else if constexpr (requires { value.begin(); }) {
        std::string text;
        for (const auto& element : value) text += (text.empty() ? "" : ", ") + as_text(element);
        return "[" + text + "]";
    } else {
        static_assert(is_same_v<T, SslContext> || requires { fields_of(no_record<T>); },
                      "a field has a type without a text: add it here; if it is a record, add it to each_record.inl");
        std::string text;
        const auto add = [&](const std::string& name, const auto& now, const auto& fresh) {
            if (!(now == fresh)) text += (text.empty() ? "" : " ") + name + "=" + as_text(now);
        };
        if constexpr (is_same_v<T, SslContext>) {
#define QEL_SSL_FIELD(name, ...) add(#name, value.name(), T().name());
#include "qel/util/ssl_context_fields.def"
        } else each_field<T>([&](const auto& f) { add(f.name, (value.*f.read)(), (T().*f.read)()); });
        return "(" + text + ")";
    }
}
// clang-format on

} // namespace qel::config::test
