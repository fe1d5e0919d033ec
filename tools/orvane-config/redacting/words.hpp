// Words that stand for others.
#pragma once

#include "text/tokens.hpp"

#include <map>
#include <span>
#include <string>
#include <string_view>

namespace orvane::redacting {

/// Whether a word may stay.
using Keep = bool(std::u16string_view word);

/// Gives each word another one: equal ones for equal ones, also where case does not count, and in the same order. A word has
/// what warnings look at: a digit in front, capitals only, letters of other alphabets.
class Words {
public:
    /// For the words in these lines. None of them is used for another.
    explicit Words(std::span<const Tokens> lines);

    /// The text with other words and addresses. Single characters stay, and what is between words.
    std::u16string replaced(std::u16string_view text, Keep* keep);

    /// The same for the name or address of a machine. The names that every machine has for itself stay.
    std::u16string host(std::u16string_view text);

private:
    std::u16string other(std::u16string_view word);

    std::map<std::u16string, std::size_t> numbers_{}; ///< of words in lower case
    std::map<std::u16string, std::u16string> others_{};
    std::map<std::u16string, unsigned>
        spellings_{}; ///< how many ways to write a word in lower case were seen
    std::map<std::u16string, std::u16string> addresses_{};
};

} // namespace orvane::redacting
