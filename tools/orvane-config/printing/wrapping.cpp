// Text of a width that people read.
#include "printing/wrapping.hpp"

#include <algorithm>

std::string orvane::wrapped(std::string_view text, std::size_t indent, std::size_t hanging,
                            std::string_view mark, std::size_t width) {
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
