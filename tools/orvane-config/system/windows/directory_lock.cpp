// Directories for one publisher at a time, on Windows.
#include "system/directory_lock.hpp"

#include "system/windows/handle.hpp"

#include "qel/i18n/convert.hpp"
#include "qel/util/native_path.hpp"

#include <string>

namespace orvane {
namespace {

using qel::util::filesystem::Path;

/// A name for all processes of this machine. It is made from what the file system calls the directory, which is the same
/// however a path to it is written; empty when there is no such directory.
std::wstring name_of(const Path& directory) {
    const HANDLE opened = CreateFileW(qel::util::filesystem::native(directory).c_str(), 0,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (opened == INVALID_HANDLE_VALUE) return {};
    const Handle owner(opened);
    BY_HANDLE_FILE_INFORMATION there{};
    if (!GetFileInformationByHandle(opened, &there)) return {};
    std::wstring name = L"Global\\orvane-config";
    for (const DWORD part : {there.dwVolumeSerialNumber, there.nFileIndexHigh, there.nFileIndexLow})
        name += L"-" + std::to_wstring(part);
    return name;
}

/// Of the directory that the pid file is in.
std::wstring name_of_answer(const Path& pid_file, unsigned pid) {
    const std::wstring directory = name_of(pid_file.parent_path());
    return directory.empty() ? directory : directory + L"-" + std::to_wstring(pid);
}

std::wstring existing_name_of(const Path& directory) {
    std::wstring name = name_of(directory);
    if (name.empty()) fail("cannot open " + qel::i18n::ustring_to_utf8(directory.text()), GetLastError());
    return name;
}

} // namespace

std::string identity_of(const Path& directory) {
    const std::wstring name = existing_name_of(directory);
    return qel::i18n::ustring_to_utf8(std::u16string(name.begin(), name.end()));
}

struct DirectoryLock::State {
    std::string directory;
    Handle mutex{};
};

// A directory cannot be locked itself; a mutex named for it serves all publishers of this machine.
DirectoryLock::DirectoryLock(const Path& directory)
    : state_(new State{qel::i18n::ustring_to_utf8(directory.text())}) {
    state_->mutex.reset(CreateMutexW(nullptr, FALSE, existing_name_of(directory).c_str()));
    // One that exists and may not be opened is another user's, who has the lock.
    if (state_->mutex.get() == nullptr && GetLastError() != ERROR_ACCESS_DENIED)
        fail("cannot lock " + state_->directory, GetLastError());
}

DirectoryLock::~DirectoryLock() {
    if (state_->mutex.get() != nullptr) ReleaseMutex(state_->mutex.get());
}

bool DirectoryLock::try_to_lock() {
    if (state_->mutex.get() == nullptr) return false;
    // One that was abandoned, by a publisher that was killed, is ours as well.
    const DWORD got = WaitForSingleObject(state_->mutex.get(), 0);
    if (got == WAIT_FAILED) fail("cannot lock " + state_->directory, GetLastError());
    return got != WAIT_TIMEOUT;
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
