// A Windows console has its own code page.
#include "qel/i18n/convert.hpp"

#include "wide.hpp"

#include <climits>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace qel::i18n {

std::string ustring_to_term(std::u16string_view text) {
    const UINT code_page = ::GetConsoleOutputCP();
    const bool fits = text.size() <= std::size_t{INT_MAX};
    if (code_page == 0 || code_page == CP_UTF8 || !fits) return ustring_to_utf8(text);

    const std::wstring wide = to_wide(text);
    const int length = static_cast<int>(wide.size());
    const auto convert = [&](char* out, int size) {
        return ::WideCharToMultiByte(code_page, 0, wide.data(), length, out, size, nullptr, nullptr);
    };
    const int size = convert(nullptr, 0);
    // If the text cannot be converted to the code page, the user must still get the message.
    if (size <= 0) return ustring_to_utf8(text);
    std::string result(static_cast<std::size_t>(size), '\0');
    convert(result.data(), size);
    return result;
}

} // namespace qel::i18n
