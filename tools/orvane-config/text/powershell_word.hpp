// Words of PowerShell's command line.
#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// The token, UTF-8, as PowerShell reads it back.
std::string powershell_word(const std::string& token);

/// The same for a token with characters that cannot be seen: their codes are in their places.
std::u16string powershell_word_with_codes(std::u16string_view token);

} // namespace orvane
