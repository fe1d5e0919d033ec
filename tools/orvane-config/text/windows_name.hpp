// Names that files cannot have on Windows.
#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// Why there can be no file or directory of this path, a clause; empty when there can.
std::string why_no_windows_name(std::u16string_view path);

} // namespace orvane
