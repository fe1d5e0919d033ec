// Which flag was meant by a name.
#pragma once

#include "reference/reference.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The flag whose letters and digits these are, however they are separated, marked and wrapped; else null.
const Reference* flag_spelled(std::u16string_view text);

/// The flags that were probably meant by a name, the likeliest first: with the same words, or nearly the same letters. At
/// most three; none when more are as likely.
std::vector<const Reference*> flags_like(std::u16string_view name);

/// A flag about the same thing as a name that begins with no-, enable- or the like.
struct Polarity {
    const Reference* flag;
    bool is_default; ///< the name asks for what holds without the flag
};
std::optional<Polarity> polarity_of(std::u16string_view name);

} // namespace orvane
