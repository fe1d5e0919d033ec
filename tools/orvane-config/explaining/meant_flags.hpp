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

/// A token as a name and what follows it: "--http=9910".
struct NameAndValue {
    std::u16string_view name;
    char16_t separator = 0; ///< 0: the token is a name only
    std::u16string_view rest{};
};
NameAndValue split_token(std::u16string_view token);

/// Whether the text begins with a hyphen, or a dash, perhaps in quotes.
bool begins_as_flag(std::u16string_view text);

/// Also "/wait", but no absolute path.
bool is_flag_like(std::u16string_view text);

/// Whether it was meant as a flag, even where a command's options may follow.
bool resembles_a_flag(std::u16string_view text);

/// A flag, or what was meant as one.
bool is_meant_as_flag(const std::u16string& text);

} // namespace orvane
