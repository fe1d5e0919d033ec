// What the formats of command lines have in common.
#pragma once

#include "text/tokens.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane {

/// A place in a text, counted from 1, the column in characters. Line 0: the text has no lines.
struct Spot {
    std::uint32_t line = 0, column = 0;
    std::uint32_t file = 0; ///< of those that the text was put together from
};

/// Text, UTF-8, whose bytes know where they were in the file.
struct LocatedText {
    std::string bytes{};
    std::vector<Spot> spots{}; ///< of each byte

    void append(const LocatedText& from, std::size_t begin, std::size_t end);
    void append(char byte, Spot spot);
};

LocatedText part(const LocatedText& text, std::size_t begin, std::size_t end);

/// The text in a file's bytes: UTF-8, without the marks of editors.
std::string decoded(std::string bytes);

/// The place of the first byte that is no UTF-8.
std::optional<Spot> first_not_utf8(const std::string& text);

/// The text of a whole file.
LocatedText located(std::string_view text);

/// A token, UTF-8, and where it begins; of some formats also which bytes of the text it is.
struct ReadToken {
    std::string text;
    Spot spot;
    std::size_t begin = 0, end = 0;
};
using ReadTokens = std::vector<ReadToken>;

/// Thrown by readers that meet what they do not understand.
struct NotUnderstood : std::runtime_error {
    NotUnderstood(Spot where, const std::string& why, std::string with_names = {})
        : runtime_error(why), spot(where), whole(std::move(with_names)) {}
    Spot spot;
    std::string whole; ///< the same with names in the file, which are private; may be empty
};

/// Thrown by writers of formats that cannot hold a token.
struct CannotHold : std::runtime_error {
    using runtime_error::runtime_error;
};

/// Tokens, UTF-8, that belong on one line: a flag and its value.
using TokenGroup = std::vector<std::string>;
using TokenGroups = std::vector<TokenGroup>;

/// All tokens, each written by `quoted`, with `between` after each group but the last.
std::string joined(const TokenGroups& groups, std::string (*quoted)(const std::string&),
                   std::string_view between);

/// The first line that is neither blank nor a comment.
std::string_view first_line_of(std::string_view text);

inline constexpr std::string_view line_blanks = " \t\r";

/// Calls it with each line that is not blank, without blanks around it, and where it begins.
template <class Use>
void for_each_line(std::string_view text, const Use& use) {
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::size_t from = std::min(text.find_first_not_of(line_blanks, begin), end);
        const std::string_view line = text.substr(from, end - from);
        if (!line.empty()) use(line.substr(0, line.find_last_not_of(line_blanks) + 1), from);
        begin = end + 1;
    }
}

/// [Name], as in units and other files of settings.
bool is_section(std::string_view line);

/// A reader's way through a text.
class Walk {
public:
    explicit Walk(const LocatedText& text) : text_(text) {}

    bool done() const { return at_ == text_.bytes.size(); }
    /// A byte that is still to come; 0 after the end.
    char peek(std::size_t ahead = 0) const {
        return at_ + ahead < text_.bytes.size() ? text_.bytes[at_ + ahead] : '\0';
    }
    char next() { return text_.bytes[at_++]; }
    bool comes(std::string_view what) const {
        return std::string_view(text_.bytes).substr(at_).starts_with(what);
    }
    /// Moves over it if it is what comes next.
    bool skip(std::string_view what) {
        const bool comes_now = comes(what);
        at_ += comes_now ? what.size() : 0;
        return comes_now;
    }
    void skip_any_of(std::string_view bytes) {
        at_ = std::min(text_.bytes.find_first_not_of(bytes, at_), text_.bytes.size());
    }
    /// Up to the first of these bytes, or the end.
    void skip_to(std::string_view bytes) {
        at_ = std::min(text_.bytes.find_first_of(bytes, at_), text_.bytes.size());
    }
    std::size_t at() const { return at_; }
    void move_to(std::size_t at) { at_ = std::min(at, text_.bytes.size()); }
    Spot spot() const {
        if (text_.spots.empty()) return {1, 1};
        if (!done()) return text_.spots[at_];
        return {text_.spots.back().line, text_.spots.back().column + 1};
    }
    [[noreturn]] void refuse(const std::string& why, const std::string& with_names = {}) const {
        throw NotUnderstood(spot(), why, with_names);
    }

private:
    const LocatedText& text_;
    std::size_t at_ = 0;
};

} // namespace orvane
