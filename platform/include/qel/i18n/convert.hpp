// Conversions between UTF-16 (wide) and narrow text.
//
// They accept any input: each ill-formed part becomes U+FFFD, and the well-formed text around it is kept. They throw
// only std::bad_alloc.
#pragma once

#include "qel/util/platform_export.hpp"

#include <string>
#include <string_view>

namespace qel::i18n {

///@{
/// Converts between UTF-16 and UTF-8. Throws std::bad_alloc.
ZEP_CONFIG_PLATFORM_API std::string ustring_to_utf8(std::u16string_view text);
ZEP_CONFIG_PLATFORM_API std::u16string utf8_to_ustring(std::string_view text);
///@}

/// Converts ASCII to UTF-16: each byte below 0x80 is one code unit; any other byte becomes U+FFFD. Throws
/// std::bad_alloc.
ZEP_CONFIG_PLATFORM_API std::u16string ascii_to_ustring(std::string_view text);

/// Converts text that is shown to the user: to UTF-8 on POSIX; on Windows to the console's output code page, or to
/// UTF-8 if the process has no console. Throws std::bad_alloc.
ZEP_CONFIG_PLATFORM_API std::string ustring_to_term(std::u16string_view text);

} // namespace qel::i18n
