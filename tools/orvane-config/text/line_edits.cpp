// Changes of whole lines in a text.
#include "text/line_edits.hpp"

#include <algorithm>

namespace orvane {
namespace {

using Lines = std::vector<std::string>;

constexpr std::size_t around = 3; // lines that are shown before and after a change

/// What is between two changes that are shown together stays.
class Hunk {
public:
    Hunk(const Lines& lines, std::size_t before, const LineEdit& edit)
        : lines_(lines), begin_(edit.first - std::min(edit.first, around)), end_(begin_), new_begin_(before) {
        new_begin_ += begin_;
        add(edit);
    }

    bool touches(const LineEdit& edit) const { return edit.first <= end_ + 2 * around; }

    void add(const LineEdit& edit) {
        keep_to(edit.first);
        for (; end_ != edit.first + edit.count; ++end_)
            show('-', lines_[end_]);
        for (const std::string& line : edit.lines)
            show('+', line);
        new_count_ += edit.lines.size();
    }

    std::string text() {
        keep_to(std::min(end_ + around, lines_.size()));
        return std::string("@@ -")
            .append(range(begin_, end_ - begin_))
            .append(" +")
            .append(range(new_begin_, new_count_))
            .append(" @@\n")
            .append(body_);
    }

private:
    void keep_to(std::size_t end) {
        for (; end_ < end; ++end_, ++new_count_)
            show(' ', lines_[end_]);
    }

    void show(char mark, const std::string& line) {
        body_.append(1, mark).append(line);
        if (!line.ends_with('\n')) body_.append("\n\\ No newline at end of file\n");
    }

    /// An empty one is behind a line.
    static std::string range(std::size_t begin, std::size_t count) {
        return std::to_string(begin + (count == 0 ? 0 : 1)).append(",").append(std::to_string(count));
    }

    const Lines& lines_;
    std::size_t begin_, end_;
    std::size_t new_begin_, new_count_ = 0;
    std::string body_{};
};

} // namespace

std::vector<std::string> lines_in(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.emplace_back(text.substr(0, size));
        text.remove_prefix(size);
    }
    return lines;
}

std::string edited(const Lines& lines, const std::vector<LineEdit>& edits) {
    std::string text;
    std::size_t at = 0;
    const auto keep_to = [&](std::size_t end) {
        for (; at < end; ++at)
            text += lines[at];
    };
    for (const LineEdit& edit : edits) {
        keep_to(edit.first);
        for (const std::string& line : edit.lines)
            text += line;
        at += edit.count;
    }
    keep_to(lines.size());
    return text;
}

std::string unified_diff(const std::string& file, const Lines& lines, const std::vector<LineEdit>& edits) {
    if (edits.empty()) return {};
    // Behind a tab stands no name; without one, a name ends at its first blank.
    std::string text = std::string("--- ").append(file).append("\t\n+++ ").append(file).append("\t\n");
    std::size_t more = 0; // the new lines minus the old ones so far; wraps around
    for (auto edit = edits.begin(); edit != edits.end();) {
        Hunk hunk(lines, more, *edit);
        do
            more += edit->lines.size() - edit->count;
        while (++edit != edits.end() && hunk.touches(*edit) && (hunk.add(*edit), true));
        text += hunk.text();
    }
    return text;
}

} // namespace orvane
