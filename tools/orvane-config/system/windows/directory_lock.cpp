// A directory for one publisher at a time, on Windows.
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

std::wstring name_of(const std::wstring& directory, unsigned pid) {
    return directory + L"-" + std::to_wstring(pid);
}

} // namespace

struct DirectoryLock::State {
    std::wstring name;
    std::string directory;
    Handle mutex{};
    Handle mark{};
};

// A directory cannot be locked itself; a mutex named for it serves all publishers of this machine.
DirectoryLock::DirectoryLock(const Path& directory)
    : state_(new State{name_of(directory), qel::i18n::ustring_to_utf8(directory.text())}) {
    if (state_->name.empty()) fail("cannot open " + state_->directory, GetLastError());
    state_->mutex.reset(CreateMutexW(nullptr, FALSE, state_->name.c_str()));
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

// That it exists is all that it tells.
void DirectoryLock::answer_for(unsigned pid) {
    state_->mark.reset(CreateEventW(nullptr, TRUE, FALSE, name_of(state_->name, pid).c_str()));
}

bool is_answered_for(const Path& path, unsigned pid) {
    const std::wstring directory = name_of(path);
    if (directory.empty()) return false;
    const Handle mark(OpenEventW(SYNCHRONIZE, FALSE, name_of(directory, pid).c_str()));
    return mark.get() != nullptr || GetLastError() == ERROR_ACCESS_DENIED;
}

} // namespace orvane
