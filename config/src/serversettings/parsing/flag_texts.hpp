// The flag texts and their order as compile-time constants: the texts of the option:: functions, without building a
// string.
#pragma once

#include <array>
#include <string_view>

namespace qel::config::flag {

#define ZEP_FLAG(name, text) inline constexpr std::u16string_view name = text;
#include "qel/config/flags.def"

/// All flags in dispatch order.
inline constexpr auto in_order = std::to_array({
#define ZEP_FLAG(name, text) name,
#include "qel/config/flags.def"
});

} // namespace qel::config::flag
