// Mistyped and invisible characters, and texts without them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

inline constexpr std::u16string_view dashes = u"\u2010\u2011\u2012\u2013\u2014\u2015\u2212\uFE58\uFE63\uFF0D";
inline constexpr std::u16string_view quotes =
    u"\"'`\u00B4\u2018\u2019\u201A\u201B\u201C\u201D\u201E\u00AB\u00BB";
/// Blanks, some of which have no width.
inline constexpr std::u16string_view blanks = u" \t\r\n\u00A0\u200B\u200C\u200D\u200E\u200F\u2060\uFEFF";

bool is_one_of(char16_t c, std::u16string_view set);

/// Without characters of the set at both ends.
std::u16string trimmed(std::u16string_view text, std::u16string_view set);

/// As it looks: no colour escapes and nothing invisible, every blank a space, look-alikes of ASCII as ASCII.
std::u16string folded(std::u16string_view text);

/// Like folded(), but look-alikes stay: what a value may have been before it was copied.
std::u16string visible(std::u16string_view text);

/// A value without quotes, brackets, blanks and commas around it, and without what cannot be seen in it.
std::u16string bare(std::u16string_view text);

/// The words of a flag, without what is often mistyped around and between them: "--Log_Root " and "logRoot" give
/// "log-root".
std::u16string normalized(std::u16string_view text);

/// The same without hyphens.
std::u16string letters(std::u16string_view text);

/// The words between the separators, each of which is one of these characters.
std::vector<std::u16string> split_words(std::u16string_view text, std::u16string_view separators = u"-");

/// How many insertions, deletions, replacements and swaps of neighbours turn one text into the other, at most `most` + 1.
std::size_t distance(std::u16string_view a, std::u16string_view b, std::size_t most);

/// Those of the texts that are most like the words, at most three.
std::vector<std::string> most_like(const std::u16string& words, const std::vector<std::string>& texts);

/// With ASCII letters in lower case.
std::u16string lower(std::u16string text);

/// Whether other programs take it as switching off: "false", "no".
bool means_off(std::u16string_view text);

/// A letter or digit of any alphabet.
bool is_alphanumeric(char16_t c);

bool all_digits(std::u16string_view text);

/// Four numbers up to 255.
bool is_ipv4(std::u16string_view host);

/// A letter of another alphabet that is drawn like a Latin one, or a full-width character.
bool looks_latin(char16_t c);

} // namespace orvane
