// How flags are mistyped, and which one was meant.
#pragma once

#include "reference/reference.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

inline constexpr std::u16string_view dashes = u"\u2010\u2011\u2012\u2013\u2014\u2015\u2212";
inline constexpr std::u16string_view quotes = u"\"'\u2018\u2019\u201C\u201D";
/// Blanks, some of which have no width.
inline constexpr std::u16string_view blanks = u" \t\r\n\u00A0\u200B\u2060\uFEFF";

bool is_one_of(char16_t c, std::u16string_view set);

/// Whether a shell would have to be told: nobody sees it in a line.
bool is_invisible(char16_t c);

/// Without characters of the set at both ends.
std::u16string trimmed(std::u16string_view text, std::u16string_view set);

/// The words of a flag, without what is often mistyped around and between them: "--Log_Root " gives "log-root".
std::u16string normalized(std::u16string_view text);

/// Those of the texts that are most like the words, at most three.
std::vector<std::string> most_like(const std::u16string& words, const std::vector<std::string>& texts);

/// The flags that were probably meant, the likeliest first, at most three.
std::vector<std::string> similar_flags(const std::u16string& words);

/// The flags that have all the words one behind the other, at most three.
std::vector<std::string> flags_with(const std::u16string& words);

/// The flag that has just these words, or null.
const Reference* flag_of(const std::u16string& words);

/// What is wrong with the spelling of a token whose words are a flag's.
std::string misspelling(std::u16string_view token, const std::string& flag);

/// Whether the text begins with a hyphen, or a dash, perhaps in quotes.
bool begins_as_flag(std::u16string_view text);

/// Whether it was meant as a flag even where a command's own options may stand.
bool resembles_a_flag(std::u16string_view text);

} // namespace orvane
