// Windows file calls take the text unchanged, including ill-formed parts.
#include "qel/util/native_path.hpp"

#include "long_path.hpp"
#include "wide.hpp"

#include <windows.h>

namespace qel::util::filesystem {

std::wstring long_form(const std::u16string& path) {
    if (path.size() < MAX_PATH || path.starts_with(long_prefix)) return to_wide(path);
    if (path.starts_with(u"\\\\")) return to_wide(long_share_prefix) + to_wide(path.substr(2));
    return to_wide(long_prefix) + to_wide(path);
}

std::filesystem::path native(const Path& path) {
    // Cut at a NUL, it would name another file.
    if (path.text().find(u'\0') != path.text().npos) return {};
    std::wstring text = to_wide(path.text());
    // A relative path is short only if it is still short with the current directory in front of it.
    const DWORD size = ::GetFullPathNameW(text.c_str(), 0, nullptr, nullptr);
    if (size <= MAX_PATH) return text;
    std::wstring full(size, L'\0');
    full.resize(::GetFullPathNameW(text.c_str(), size, full.data(), nullptr));
    return long_form(from_wide(full));
}

} // namespace qel::util::filesystem
