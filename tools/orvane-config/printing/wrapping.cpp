// Text of a width that people read.
#include "printing/wrapping.hpp"

#include "system/terminal.hpp"

#include <algorithm>

namespace orvane {

std::size_t text_width() {
    static const std::size_t width = std::clamp<std::size_t>(terminal_columns(), 40, 100);
    return width;
}

std::string wrapped(std::string_view text, std::size_t indent, std::size_t hanging, std::string_view mark,
                    std::size_t width) {
    std::string lines(indent, ' ');
    for (std::size_t room = width - indent;; room = width - indent - hanging) {
        if (text.size() <= room) return lines.append(text);
        std::size_t end = text.rfind(' ', room - mark.size());
        if (end == text.npos || end == 0) end = text.find(' ', 1);
        if (end == text.npos) return lines.append(text);
        lines.append(text.substr(0, end)).append(mark).append("\n").append(indent + hanging, ' ');
        text.remove_prefix(end + 1);
    }
}

std::string beside(std::string_view head, std::string_view text, std::size_t indent) {
    std::string lines = wrapped(text, indent);
    const bool fits = head.size() < indent;
    return lines.replace(0, fits ? head.size() : 0, std::string(head) + (fits ? "" : "\n"));
}

} // namespace orvane
