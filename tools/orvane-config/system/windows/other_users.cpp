// What other users may do to a place in the file system, by its access list: who reads. Who writes is not asked.
#include "system/other_users.hpp"

#include "qel/i18n/convert.hpp"
#include "qel/util/native_path.hpp"

#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

namespace orvane {
namespace {

struct Releases {
    void operator()(void* memory) const { LocalFree(memory); }
};

/// Everyone who has an account, in one word or another.
bool is_every_user(PSID one) {
    constexpr WELL_KNOWN_SID_TYPE groups[] = {WinWorldSid, WinAuthenticatedUserSid, WinBuiltinUsersSid,
                                              WinAccountDomainUsersSid};
    return std::ranges::any_of(groups, [one](auto group) { return IsWellKnownSid(one, group) != 0; });
}

std::string text_of(PSID one) {
    wchar_t* text = nullptr;
    if (!ConvertSidToStringSidW(one, &text)) return {};
    const std::unique_ptr<wchar_t, Releases> owned(text);
    return qel::i18n::ustring_to_utf8(std::u16string(text, text + wcslen(text)));
}

/// Those of every user to whom the list gives the right to read. An entry that denies it counts for nothing.
struct Readers {
    bool known = false;
    std::vector<std::string> every_user{};
};

void add_reader(const ACL* list, DWORD number, Readers& readers) {
    void* found = nullptr;
    if (!GetAce(const_cast<ACL*>(list), number, &found)) return;
    const auto* const entry = static_cast<ACCESS_ALLOWED_ACE*>(found);
    const auto* const head = &entry->Header;
    constexpr DWORD read = FILE_READ_DATA | GENERIC_READ | GENERIC_ALL;
    if (head->AceType != ACCESS_ALLOWED_ACE_TYPE || (head->AceFlags & INHERIT_ONLY_ACE) != 0 ||
        (entry->Mask & read) == 0)
        return;
    const auto who = const_cast<DWORD*>(&entry->SidStart);
    if (is_every_user(who)) readers.every_user.push_back(text_of(who));
}

Readers readers_of(const qel::util::filesystem::Path& path) {
    std::wstring name = qel::util::filesystem::native(path).wstring();
    ACL* list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &list,
                              nullptr, &descriptor) != ERROR_SUCCESS)
        return {};
    const std::unique_ptr<void, Releases> owned(descriptor);
    Readers readers{true};
    if (list == nullptr) readers.every_user.push_back("S-1-1-0"); // there is no list: nobody is kept out
    for (DWORD number = 0; list != nullptr && number != list->AceCount; ++number)
        add_reader(list, number, readers);
    return readers;
}

} // namespace

OtherUsers other_users_at(const qel::util::filesystem::Path& path) {
    std::error_code error;
    // The right to go through directories is everybody's.
    if (std::filesystem::is_directory(qel::util::filesystem::native(path), error)) return {true, false, true};
    const Readers readers = readers_of(path);
    return {readers.known, false, !readers.every_user.empty()};
}

bool can_ask_about_writers() {
    return false;
}

std::string command_against_readers(const qel::util::filesystem::Path& path, const std::string& shown) {
    std::string command = "icacls " + shown + " /inheritance:d /remove:g";
    for (const std::string& one : readers_of(path).every_user)
        command += " *" + one;
    return command;
}

} // namespace orvane
