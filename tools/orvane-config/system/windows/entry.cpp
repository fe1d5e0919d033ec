// A place in the file system, on Windows.
#include "system/entry.hpp"

#include "system/windows/handle.hpp"

#include "qel/i18n/convert.hpp"
#include "qel/util/native_path.hpp"

#include <array>
#include <vector>

#include <lmcons.h>

namespace orvane {
namespace {

using qel::util::filesystem::native;
using qel::util::filesystem::Path;

Entry::State state_without(DWORD error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
        return Entry::State::absent;
    case ERROR_FILENAME_EXCED_RANGE:
        return Entry::State::too_long;
    case ERROR_ACCESS_DENIED:
        return Entry::State::unreachable;
    case ERROR_CANT_RESOLVE_FILENAME:
        return Entry::State::loop;
    default:
        return Entry::State::failed;
    }
}

/// The rights that the system's own check of the access-control list grants this user; none when the list cannot be read.
std::optional<DWORD> rights_to(const std::wstring& name) {
    constexpr SECURITY_INFORMATION wanted =
        OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
    DWORD size = 0;
    GetFileSecurityW(name.c_str(), wanted, nullptr, 0, &size);
    std::vector<unsigned char> list(size);
    if (size == 0 || !GetFileSecurityW(name.c_str(), wanted, list.data(), size, &size)) return std::nullopt;

    HANDLE opened = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY | TOKEN_DUPLICATE, &opened)) return std::nullopt;
    const Handle process(opened);
    if (!DuplicateToken(process.get(), SecurityImpersonation, &opened)) return std::nullopt;
    const Handle user(opened);

    GENERIC_MAPPING mapping{FILE_GENERIC_READ, FILE_GENERIC_WRITE, FILE_GENERIC_EXECUTE, FILE_ALL_ACCESS};
    std::array<unsigned char, 1024> privileges{};
    DWORD length = privileges.size(), granted = 0;
    BOOL allowed = FALSE;
    if (!AccessCheck(list.data(), user.get(), MAXIMUM_ALLOWED, &mapping,
                     reinterpret_cast<PRIVILEGE_SET*>(privileges.data()), &length, &granted, &allowed))
        return std::nullopt;
    return allowed ? granted : 0;
}

bool is_read_only_volume(const std::wstring& name) {
    std::wstring root(32768, L'\0');
    DWORD flags = 0;
    return GetVolumePathNameW(name.c_str(), root.data(), static_cast<DWORD>(root.size())) &&
           GetVolumeInformationW(root.c_str(), nullptr, 0, nullptr, nullptr, &flags, nullptr, 0) &&
           (flags & FILE_READ_ONLY_VOLUME) != 0;
}

/// What this process may do with a file or directory of these attributes.
void look_at_rights(const std::wstring& name, DWORD attributes, Entry& there) {
    const bool directory = there.state == Entry::State::directory;
    const auto granted = rights_to(name);
    there.rights_known = granted.has_value();
    const DWORD rights = granted.value_or(0);
    constexpr DWORD to_create = FILE_ADD_FILE | FILE_ADD_SUBDIRECTORY;
    there.read = (rights & FILE_LIST_DIRECTORY) != 0; // the same bit as FILE_READ_DATA
    // Everybody may pass through directories, unless the system is told otherwise.
    there.execute = directory || (rights & FILE_EXECUTE) != 0;
    there.read_only = is_read_only_volume(name);
    const bool writable =
        directory ? (rights & to_create) == to_create
                  : (rights & FILE_WRITE_DATA) != 0 && (attributes & FILE_ATTRIBUTE_READONLY) == 0;
    there.write = writable && !there.read_only;
}

} // namespace

Entry entry_at(const Path& path) {
    const std::wstring name = native(path);
    Entry there;
    const DWORD at_name = GetFileAttributesW(name.c_str());
    there.link = at_name != INVALID_FILE_ATTRIBUTES && (at_name & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    // With no access asked for, this follows links, and blocks nobody.
    const HANDLE opened = CreateFileW(name.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (opened == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        there.state = state_without(error);
        there.failure = std::system_category().message(static_cast<int>(error));
        return there;
    }
    const Handle entry(opened);
    BY_HANDLE_FILE_INFORMATION information{};
    if (GetFileType(entry.get()) != FILE_TYPE_DISK ||
        !GetFileInformationByHandle(entry.get(), &information)) {
        there.state = Entry::State::other;
        return there;
    }
    const bool directory = (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    there.state = directory ? Entry::State::directory : Entry::State::file;
    look_at_rights(name, information.dwFileAttributes, there);
    return there;
}

std::optional<Room> room_in(const Path& directory) {
    ULARGE_INTEGER free{};
    if (!GetDiskFreeSpaceExW(native(directory).c_str(), &free, nullptr, nullptr)) return std::nullopt;
    return Room{free.QuadPart, std::nullopt};
}

std::string user_name() {
    std::array<wchar_t, UNLEN + 1> name{};
    DWORD size = name.size();
    if (!GetUserNameW(name.data(), &size)) return "this user";
    return qel::i18n::ustring_to_utf8(std::u16string(name.begin(), name.begin() + size - 1));
}

bool has_every_right() {
    return false;
}

std::string command_to_grant(Right right, const Path& path, bool) {
    constexpr std::array<const char*, 4> rights = {"RX", "RX", "M", "RX"};
    return "icacls \"" + qel::i18n::ustring_to_utf8(path.text()) + "\" /grant \"" + user_name() +
           ":(OI)(CI)" + rights.at(static_cast<std::size_t>(right)) + "\"";
}

std::string command_to_create(const Path& directory, bool by_another) {
    const std::string name = '"' + qel::i18n::ustring_to_utf8(directory.text()) + '"';
    return "mkdir " + name +
           (by_another ? ", and then " + command_to_grant(Right::write, directory, false) : "");
}

} // namespace orvane
