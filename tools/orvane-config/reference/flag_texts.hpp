// The texts of the server's flags, as constants: orvane::flag::log_root.
#pragma once

#include <string_view>

namespace orvane::flag {

#define ZEP_FLAG(name, text) inline constexpr std::u16string_view name = text;
#include "qel/config/flags.def"

} // namespace orvane::flag
