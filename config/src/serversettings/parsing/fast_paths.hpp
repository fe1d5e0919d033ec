// Numbers in the form that command lines nearly always use.
//
// boost::lexical_cast defines what a text means, and asks the locale. The first function here knows only the common form:
// it returns what the cast would return, or nothing; then the cast decides.
#pragma once

#include "qel/config/types.hpp"
#include "qel/i18n/convert.hpp"

#include <boost/lexical_cast.hpp>

#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>

namespace qel::config {

/// Decimal digits only.
optional<std::uint64_t> plain_number(std::u16string_view text) noexcept;

/// The value that lexical_cast gives. Throws boost::bad_lexical_cast.
template <class T>
T number_from(std::u16string_view text) {
    const auto plain = plain_number(text);
    if (plain && std::cmp_less_equal(*plain, std::numeric_limits<T>::max())) return static_cast<T>(*plain);
    return boost::lexical_cast<T>(i18n::ustring_to_utf8(text));
}

/// The same for 16 bits. That cast itself is not used: it multiplies int, and overflows with ".58160".
unsigned short port_from(std::u16string_view text);

} // namespace qel::config
