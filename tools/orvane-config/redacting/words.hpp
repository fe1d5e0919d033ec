// The words of a text, and which of them are public: everything else is private.
#pragma once

#include "reference/reference.hpp"

#include <cstddef>
#include <string_view>

namespace orvane::redacting {

enum class Kind { mark, word, ipv4, ipv6 };

/// A piece of a text: a word, an address, or a mark between them.
struct Word {
    std::u16string_view text;
    const Reference* flag = nullptr; ///< whose value the text is; null: none that is known
    std::size_t begin = 0, end = 0;
    Kind kind = Kind::mark;
    bool near_root = true; ///< nothing before it was replaced
    bool in_path = false;  ///< of a URL

    /// Moves on to the next piece, if there is one. In a word, characters of `also` may be between others; in a host, a port
    /// may follow an IPv6 address without brackets.
    bool next(std::u16string_view also = {});

    std::u16string_view word() const { return text.substr(begin, end - begin); }
    char16_t before() const { return begin == 0 ? u'\0' : text[begin - 1]; }
    char16_t after() const { return end == text.size() ? u'\0' : text[end]; }
};

/// What may be in the name of a host between letters and digits, and what separates directories.
inline constexpr std::u16string_view of_hosts = u"-._", slashes = u"/\\";

bool is_of_a_word(char16_t c);

/// Whether a word stays, a rule for each form of values.
using Stays = bool(const Word& word);

Stays nothing;
Stays known_words; ///< of the tool's own tables; not of one letter, and no numbers but 0 and 1
Stays names;       ///< of flags: as above, and letters
Stays quantity;    ///< as known_words, but see is_quantity()
Stays tls_names;   ///< of protocols, ciphers and curves
Stays first_word;  ///< if it is known: up to a blank, or to the second one after a semicolon
Stays path;        ///< a drive, directories of the system near the root, and what kind of file it is
Stays hosts;       ///< a port, and what is known before a host

/// Whether all of a text is public: numbers, alone or with a unit, and known words.
bool is_quantity(std::u16string_view text);

} // namespace orvane::redacting
