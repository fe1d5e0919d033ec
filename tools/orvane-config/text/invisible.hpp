// Characters that cannot be seen in a line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvane {

bool is_invisible(char32_t c);

/// How many units the invisible character at `at` has: 1 or 2; 0 if the one there can be seen.
std::size_t invisible_at(std::u16string_view text, std::size_t at);

bool has_invisible(std::u16string_view text);

/// UTF-8 of JSON, where whatever is invisible and no ASCII is in a string, with its codes.
std::string with_json_codes(const std::string& text);

/// As \u and four hexadecimal digits, or \U and eight.
std::u16string code_of(char32_t character);

/// `text` with the code of each invisible character in its place, but those of `kept` and a backslash before those of `quoted`.
std::u16string with_codes(std::u16string_view text, std::u16string_view kept,
                          std::u16string_view quoted = {});

} // namespace orvane
