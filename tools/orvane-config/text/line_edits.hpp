// Changes of whole lines in a text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// With their ends.
std::vector<std::string> lines_in(std::string_view text);

/// In the place of `count` lines from the one at `first` on.
struct LineEdit {
    std::size_t first = 0, count = 0;
    std::vector<std::string> lines{};
};

std::string edited(const std::vector<std::string>& lines, const std::vector<LineEdit>& edits);

/// As `patch` takes it. The edits are in order, and do not touch.
std::string unified_diff(const std::string& file, const std::vector<std::string>& lines,
                         const std::vector<LineEdit>& edits);

} // namespace orvane
