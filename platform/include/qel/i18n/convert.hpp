// Conversions between UTF-16 (wide) and narrow text.
//
// All of them are total: ill-formed input never throws and never takes a well-formed neighbour with it; each
// ill-formed part becomes U+FFFD. They throw std::bad_alloc only.
#pragma once

#include "qel/util/platform_export.hpp"

#include <string>
#include <string_view>

namespace qel::i18n {

///@{
/// Between UTF-16 and UTF-8; total, as said above. Throws std::bad_alloc.
ZEP_CONFIG_PLATFORM_API std::string ustring_to_utf8(std::u16string_view text);
ZEP_CONFIG_PLATFORM_API std::u16string utf8_to_ustring(std::string_view text);
///@}

/// Each byte below 0x80 is one code unit; any other byte becomes U+FFFD. Throws std::bad_alloc.
ZEP_CONFIG_PLATFORM_API std::u16string ascii_to_ustring(std::string_view text);

/// For texts echoed to the user: UTF-8 on POSIX; on Windows the console's output code page, or UTF-8 when the
/// process has no console. Throws std::bad_alloc.
ZEP_CONFIG_PLATFORM_API std::string ustring_to_term(std::u16string_view text);

} // namespace qel::i18n
