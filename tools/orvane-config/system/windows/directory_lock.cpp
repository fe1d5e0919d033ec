// Directories for one publisher at a time, on Windows.
#include "system/directory_lock.hpp"

#include "system/windows/handle.hpp"

#include "qel/i18n/convert.hpp"
#include "qel/util/native_path.hpp"

#include <optional>
#include <string>

namespace orvane {
namespace {

using qel::util::filesystem::Path;

/// What the file system calls the directory, which is the same however a path to it is written; none when there is no such
/// directory.
std::optional<BY_HANDLE_FILE_INFORMATION> numbers_of(const Path& directory) {
    const HANDLE opened = CreateFileW(qel::util::filesystem::native(directory).c_str(), 0,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (opened == INVALID_HANDLE_VALUE) return std::nullopt;
    const Handle owner(opened);
    BY_HANDLE_FILE_INFORMATION there{};
    return GetFileInformationByHandle(opened, &there) ? std::optional(there) : std::nullopt;
}

std::wstring index_in(const BY_HANDLE_FILE_INFORMATION& numbers) {
    return std::to_wstring(numbers.nFileIndexHigh) + L"-" + std::to_wstring(numbers.nFileIndexLow);
}

/// Of the directory that the pid file is in; empty when there is none. Without the volume, whose number can be 0 for a while
/// after the system has started: two processes must not get different names.
std::wstring name_of_answer(const Path& pid_file, unsigned pid) {
    const auto directory = numbers_of(pid_file.parent_path());
    if (!directory) return {};
    return L"Global\\orvane-config-" + index_in(*directory) + L"-" + std::to_wstring(pid);
}

} // namespace

std::string identity_of(const Path& directory) {
    const auto numbers = numbers_of(directory);
    if (!numbers) fail("cannot open " + qel::i18n::ustring_to_utf8(directory.text()), GetLastError());
    const std::wstring text = index_in(*numbers) + L"-" + std::to_wstring(numbers->dwVolumeSerialNumber);
    return {text.begin(), text.end()};
}

struct DirectoryLock::State {
    std::wstring name;
    Handle file{};   ///< while the lock is ours
    int denials = 0; ///< in succession
};

DirectoryLock::DirectoryLock(const Path& directory)
    : state_(new State{(qel::util::filesystem::native(directory) / L".orvane-config.lock").wstring()}) {}

DirectoryLock::~DirectoryLock() = default;

// A file needs no name for all processes, which could differ between two of them. The system removes it with its only handle,
// also when the process is killed.
bool DirectoryLock::try_to_lock() {
    constexpr DWORD flags =
        FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT;
    constexpr DWORD shared_with_nobody = 0;
    const HANDLE opened = CreateFileW(state_->name.c_str(), GENERIC_WRITE | DELETE, shared_with_nobody,
                                      nullptr, OPEN_ALWAYS, flags, nullptr);
    if (opened != INVALID_HANDLE_VALUE) {
        state_->file.reset(opened);
        return true;
    }
    const DWORD error = GetLastError();
    if (error == ERROR_SHARING_VIOLATION) return false;
    // A file that is being removed answers as one without rights does.
    constexpr int most_denials = 10;
    if (error == ERROR_ACCESS_DENIED && ++state_->denials < most_denials) return false;
    fail("cannot lock " +
             qel::i18n::ustring_to_utf8(std::u16string(state_->name.begin(), state_->name.end())),
         error);
}

unsigned DirectoryLock::holder() const {
    return 0;
}

// That it exists is all that it tells.
std::shared_ptr<void> answer_for(const Path& pid_file, unsigned pid) {
    const auto mark = std::make_shared<Handle>();
    const std::wstring name = name_of_answer(pid_file, pid);
    if (!name.empty()) mark->reset(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
    return mark;
}

bool is_answered_for(const Path& pid_file, unsigned pid) {
    const std::wstring name = name_of_answer(pid_file, pid);
    if (name.empty()) return false;
    const Handle mark(OpenEventW(SYNCHRONIZE, FALSE, name.c_str()));
    return mark.get() != nullptr || GetLastError() == ERROR_ACCESS_DENIED;
}

} // namespace orvane
