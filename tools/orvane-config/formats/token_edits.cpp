// Tokens that change in the text of a file, where everything else stays as it is.
#include "formats/token_edits.hpp"

#include <algorithm>
#include <span>
#include <string_view>

namespace orvane {
namespace {

/// Stands for a token that goes, until its line is looked at. No file with flags has it.
constexpr char gone = '\0';
constexpr std::string_view line_blanks = " \t";

/// Other bytes in the place of those in [begin, end).
struct Change {
    std::size_t begin, end;
    std::string text;
};

std::size_t line_begin(std::string_view text, std::size_t at) {
    return at == 0 ? 0 : text.rfind('\n', at - 1) + 1;
}

/// Without what ends it.
std::size_t line_end(std::string_view text, std::size_t at) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    return end > at && end != text.size() && text[end - 1] == '\r' ? end - 1 : end;
}

/// What ends this line; the last one, which nothing may end, as the one before it.
std::string line_break(std::string_view text, std::size_t at) {
    std::size_t end = text.find('\n', at);
    if (end == text.npos) end = text.rfind('\n');
    return end != text.npos && end != 0 && text[end - 1] == '\r' ? "\r\n" : "\n";
}

class Changes {
public:
    Changes(const LineFormat& format, std::string_view text, const ReadTokens& tokens)
        : format_(format), text_(text), tokens_(tokens) {}

    std::vector<Change> from(const std::vector<NewToken>& wanted) {
        for (const NewToken& token : wanted) {
            if (token.replaces <= next_) {
                added_.push_back(token.text);
                continue;
            }
            pass(token.replaces - 1);
            put(next_++, token.text);
        }
        pass(tokens_.size());
        return std::move(changes_);
    }

private:
    /// What was added since the last token goes first into the places of those that go.
    void pass(std::size_t end) {
        auto next = added_.begin();
        for (; next_ != end; ++next_)
            if (next != added_.end())
                put(next_, *next++);
            else
                changes_.push_back({tokens_[next_].begin, tokens_[next_].end, std::string(1, gone)});
        added_.erase(added_.begin(), next);
        if (!added_.empty()) insert();
        added_.clear();
    }

    void put(std::size_t at, const std::string& text) {
        const ReadToken& old = tokens_[at];
        if (old.text != text) changes_.push_back({old.begin, old.end, quoted(text)});
    }

    std::string quoted(const std::string& text) const {
        std::string word = format_.write({{text}});
        word.pop_back(); // the end of its line
        return word;
    }

    /// A flag gets a line where the one before it has the rest of its line for itself.
    void insert() {
        if (next_ == 0) throw CannotHold("there is nothing before " + added_[0]);
        const ReadToken& before = tokens_[next_ - 1];
        const std::size_t end = line_end(text_, before.end), begin = line_begin(text_, before.begin);
        const std::string break_here = line_break(text_, before.end);
        const std::size_t rest = text_.find_first_not_of(line_blanks, before.end);
        const bool is_last = format_.name == "flags" && (rest >= end || text_[rest] == '#');
        const std::string_view indent =
            text_.substr(begin, std::min(text_.find_first_not_of(line_blanks, begin), before.begin) - begin);
        std::string beside, below;
        for (const std::string& text : added_)
            if (format_.name == "lines")
                beside.append(break_here).append(quoted(text));
            else if (is_last && text.starts_with("--"))
                below.append(break_here).append(indent).append(quoted(text));
            else
                (below.empty() ? beside : below).append(" ").append(quoted(text));
        if (!beside.empty()) changes_.push_back({before.end, before.end, beside});
        if (!below.empty()) changes_.push_back({end, end, below});
    }

    const LineFormat& format_;
    std::string_view text_;
    const ReadTokens& tokens_;
    std::size_t next_ = 0; ///< the first one that nothing is known of yet
    std::vector<std::string> added_{};
    std::vector<Change> changes_{};
};

/// The line without what is gone and the blanks that parted it from others; none if there was nothing else, but for the \ that
/// continues it.
std::string without_gone(std::string_view line) {
    if (line.find(gone) == line.npos) return std::string(line);
    std::string left;
    bool skips = false;
    for (const char c : line) {
        if (c == gone) {
            const std::size_t last = left.find_last_not_of(line_blanks);
            skips = last == left.npos;
            if (!skips) left.erase(last + 1);
        } else if (!skips || line_blanks.find(c) == line_blanks.npos) {
            skips = false;
            left += c;
        }
    }
    return left.find_first_not_of(" \t\\\r\n") == left.npos ? std::string() : left;
}

/// The first change and those in the same lines, which `left` loses.
LineEdit line_edit(std::string_view text, std::span<const Change>& left) {
    const std::size_t begin = line_begin(text, left.front().begin);
    std::size_t at = begin, last = 0;
    std::string changed;
    do {
        const Change& change = left.front();
        changed.append(text.substr(at, change.begin - at)).append(change.text);
        at = change.end;
        left = left.subspan(1);
        last = std::min(text.find('\n', at), text.size() - 1) + 1;
    } while (!left.empty() && line_begin(text, left.front().begin) < last);
    changed.append(text.substr(at, last - at));
    LineEdit edit{static_cast<std::size_t>(std::ranges::count(text.substr(0, begin), '\n')),
                  lines_in(text.substr(begin, last - begin)).size()};
    for (const std::string& line : lines_in(changed))
        if (std::string rest = without_gone(line); !rest.empty()) edit.lines.push_back(std::move(rest));
    return edit;
}

} // namespace

std::vector<LineEdit> token_edits(const LineFormat& format, const std::string& text, const ReadTokens& tokens,
                                  const std::vector<NewToken>& wanted) {
    const std::vector<Change> changes = Changes(format, text, tokens).from(wanted);
    std::vector<LineEdit> edits;
    for (std::span<const Change> left = changes; !left.empty();)
        edits.push_back(line_edit(text, left));
    return edits;
}

} // namespace orvane
