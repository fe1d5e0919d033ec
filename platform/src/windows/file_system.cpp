// The file-system calls on Windows.
#include "file_system.hpp"

#include "long_path.hpp"
#include "path_syntax.hpp"
#include "wide.hpp"

#include "qel/util/native_path.hpp"

#include <algorithm>
#include <memory>
#include <type_traits>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace qel::util::filesystem {
namespace {

/// For calls that fill a buffer and return the length that they filled, the size that they need, or 0 for a failure.
template <class Call>
std::u16string text_of(const Call& call) {
    std::wstring text(MAX_PATH, L'\0');
    while (true) {
        const DWORD length = call(text.data(), static_cast<DWORD>(text.size()));
        if (length < text.size()) return from_wide(std::wstring_view(text).substr(0, length));
        text.resize(std::size_t{length} + 1);
    }
}

/// The usual form of an absolute path: no prefix for long paths, and no separator at the end except at a drive's root.
std::u16string tidy(std::u16string text) {
    if (text.starts_with(long_share_prefix))
        text.replace(0, long_share_prefix.size(), u"\\\\");
    else if (text.starts_with(long_prefix) && is_bare_drive(std::u16string_view(text).substr(4, 2)))
        text.erase(0, long_prefix.size());
    if (text.size() > root_length(text) && ends_in_separator(text)) text.pop_back();
    return text;
}

struct CloseHandle {
    void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using Handle = std::unique_ptr<std::remove_pointer_t<HANDLE>, CloseHandle>;

} // namespace

Entry look_up(const std::u16string& path) {
    // The system would read such a path only up to the NUL.
    if (path.find(u'\0') != std::u16string::npos) return {};

    const HANDLE opened =
        ::CreateFileW(long_form(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (opened == INVALID_HANDLE_VALUE) return {};
    const Handle entry(opened);
    std::u16string target = tidy(text_of([&](wchar_t* out, DWORD size) {
        return ::GetFinalPathNameByHandleW(entry.get(), out, size, FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
    }));
    // What can be opened but has no path of this kind, such as a device, keeps the text that was asked about.
    if (target.empty() || target == path) return {Entry::Kind::plain};
    return {Entry::Kind::resolved, std::move(target)};
}

std::u16string starting_point(std::u16string_view root) {
    std::wstring relative = to_wide(root.empty() ? u"." : root);
    // The system treats both separators alike, but some replacements for it take a leading / for another root.
    std::replace(relative.begin(), relative.end(), L'/', L'\\');
    return tidy(text_of(
        [&](wchar_t* out, DWORD size) { return ::GetFullPathNameW(relative.c_str(), size, out, nullptr); }));
}

void remove_file(const Path& path) {
    // A file that a reader has open cannot be removed. Readers of small files are quick, so this tries for a moment.
    // The owner does not care whether the file is already gone or may not be removed.
    const auto name = native(path);
    for (int tries = 0; tries != 20; ++tries) {
        if (::DeleteFileW(name.c_str()) || ::GetLastError() != ERROR_SHARING_VIOLATION) return;
        ::Sleep(5);
    }
}

} // namespace qel::util::filesystem
