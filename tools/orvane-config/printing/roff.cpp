// Text for manual pages.
#include "printing/roff.hpp"

#include "printing/wrapping.hpp"

#include <algorithm>
#include <cctype>

namespace orvane {
namespace {

/// The characters that would be set as others, or end a word of a request.
struct RoffEscape {
    char plain;
    std::string_view escaped;
};
constexpr RoffEscape escapes[] = {{'-', "\\-"},   {'\\', "\\e"},  {'\'', "\\(aq"}, {'"', "\\(dq"},
                                  {'`', "\\(ga"}, {'^', "\\(ha"}, {'~', "\\(ti"}};

} // namespace

std::string roff(std::string_view text) {
    // A line that begins with a full stop would be a request.
    std::string escaped = text.starts_with('.') ? "\\&" : "";
    for (const char c : text) {
        const auto* const found = std::ranges::find(escapes, c, &RoffEscape::plain);
        if (found == std::end(escapes))
            escaped += c;
        else
            escaped += found->escaped;
    }
    return escaped;
}

std::string roff_example(std::string_view what, std::string_view command) {
    // The manual indents it by 14 columns of 80, and leaves the last two empty.
    return ".TP\n" + roff(what) + "\n.nf\n" + roff(wrapped(command, 0, 4, " \\", 64)) + "\n.fi\n";
}

std::string roff_title(std::string_view text) {
    std::string title = roff(text);
    std::transform(title.begin(), title.end(), title.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return title;
}

} // namespace orvane
