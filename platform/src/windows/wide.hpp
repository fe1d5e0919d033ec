// Windows calls use wchar_t where the rest of the code uses char16_t; both are UTF-16 units.
#pragma once

#include <string>
#include <string_view>

namespace qel {

inline std::wstring to_wide(std::u16string_view text) {
    return std::wstring(text.begin(), text.end());
}

inline std::u16string from_wide(std::wstring_view text) {
    return std::u16string(text.begin(), text.end());
}

} // namespace qel
