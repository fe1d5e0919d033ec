// The formats flags and sh, written: words as a shell quotes them; and how flags are recognized.
#include "formats/format_table.hpp"
#include "text/lists.hpp"
#include "text/shell_word.hpp"

namespace orvane {

/// A script, or some line has a flag and its value, or the first one has a program, is continued, or begins an array.
bool is_flags(std::string_view text) {
    if (text.starts_with("#!")) return true;
    bool is_first = true;
    while (true) {
        const std::string_view line = first_line_of(text);
        if (line.empty()) break;
        if ((is_first || line.starts_with("--")) &&
            (line.find_first_of(" \t") != line.npos || line.ends_with('\\') || line.ends_with('(')))
            return true;
        is_first = false;
        text.remove_prefix(static_cast<std::size_t>(line.data() - text.data()) + line.size());
    }
    return false;
}

/// A line for each flag. What is no flag stays on the line before it.
std::string as_flags(const TokenGroups& groups) {
    std::string text;
    for (const TokenGroup& group : groups) {
        const std::string words = joined(group, " ", sh_word);
        if (!text.empty()) text += words.starts_with("--") ? '\n' : ' ';
        text += words;
    }
    return text + '\n';
}

std::string as_sh(const TokenGroups& groups) {
    return joined(groups, sh_word, " ") + '\n';
}

} // namespace orvane
