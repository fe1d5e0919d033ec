// Numbers and durations in the forms that command lines nearly always use.
//
// What a text means is defined by boost::lexical_cast, which needs a stream and its locale for some types: hundreds of
// thousands of instructions for one duration. The functions here know the common forms only. Each gives what the cast
// would give, or nothing; then the cast is asked.
#pragma once

#include "qel/config/types.hpp"
#include "qel/i18n/convert.hpp"

#include <boost/lexical_cast.hpp>

#include <cstdint>
#include <limits>
#include <string_view>

namespace qel::config {

/// Decimal digits only.
optional<std::uint64_t> plain_number(std::u16string_view text) noexcept;

/// H...H:MM:SS[.f...f] with up to nine digits of hours and six of the fraction.
optional<time_duration> plain_duration(std::u16string_view text) noexcept;

/// H...H or H...H:MM with up to nine digits of hours; what is missing at the end counts as zeros.
optional<time_duration> short_duration(std::u16string_view text);

/// What lexical_cast makes of the text. Throws boost::bad_lexical_cast.
template <class T>
T number_from(std::u16string_view text) {
    const auto plain = plain_number(text);
    if (plain && *plain <= std::numeric_limits<T>::max()) return static_cast<T>(*plain);
    return boost::lexical_cast<T>(i18n::ustring_to_utf8(text));
}

} // namespace qel::config
