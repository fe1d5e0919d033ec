// Whether a token looks like a flag, and what belongs to the flag in it.
#pragma once

#include "own/option_table.hpp"

#include <string>
#include <string_view>

namespace orvane {

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

/// The option of this tool that a name stands for. Null for that of a single verb, where other servers have a flag of that name.
const OwnOption* own_option_called(std::string_view name);

} // namespace orvane
