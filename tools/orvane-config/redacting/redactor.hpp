// Command lines that can be shown to others.
#pragma once

#include "redacting/placeholders.hpp"
#include "redacting/words.hpp"
#include "text/tokens.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace orvane::redacting {

/// Replaces everything but what is known to be public. Each text is walked over from its beginning to its end.
class Redactor {
public:
    /// The lines with placeholders for what is private, equal ones for equal ones in all of them. What the tool finds in them
    /// is the same, or std::runtime_error is thrown, which says where it is not.
    std::vector<Tokens> lines(const std::vector<Tokens>& lines);

    /// The name of a file.
    std::string file(const std::string& name);

private:
    Tokens line(const Tokens& tokens);
    std::u16string token(std::u16string_view text, bool is_name);
    std::u16string named(std::u16string_view text);
    std::u16string name(std::u16string_view text);
    std::u16string value(std::u16string_view text);
    std::u16string kept(std::u16string_view text, Stays* stays);
    std::u16string replaced(Word& word, Stays* stays);

    Placeholders placeholders_{};
    const Reference* flag_ = nullptr; ///< whose value comes; null: none that is known
};

} // namespace orvane::redacting
