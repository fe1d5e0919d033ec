// A directory for one publisher at a time, on Windows.
#include "system/directory_lock.hpp"

#include "system/windows/handle.hpp"

#include "qel/i18n/convert.hpp"
#include "qel/util/canonicalize.hpp"

#include <cstdint>
#include <stdexcept>
#include <string>

namespace orvane {
namespace {

std::string name_of(const qel::util::filesystem::Path& directory) {
    return qel::i18n::ustring_to_utf8(directory.text());
}

/// The same in every build of the tool, which std::hash is not: by it publishers keep out of each other's way. (FNV-1a)
std::uint64_t number_of(const qel::util::filesystem::Path& directory) {
    std::uint64_t number = 0xcbf29ce484222325;
    for (const char16_t unit : qel::util::filesystem::canonicalize(directory).text())
        number = (number ^ unit) * 0x100000001b3;
    return number;
}

} // namespace

struct DirectoryLock::State {
    Handle mutex;
};

// A directory cannot be locked itself; a mutex named for it serves all publishers of this machine.
DirectoryLock::DirectoryLock(const qel::util::filesystem::Path& directory, std::chrono::milliseconds patience)
    : state_(std::make_unique<State>()) {
    const std::wstring name = L"Global\\orvane-config-" + std::to_wstring(number_of(directory));
    state_->mutex.reset(CreateMutexW(nullptr, FALSE, name.c_str()));
    const DWORD error = GetLastError();
    if (state_->mutex.get() == nullptr) fail("cannot lock " + name_of(directory), error);
    // One that was abandoned, by a publisher that was killed, is ours as well.
    const DWORD got = WaitForSingleObject(state_->mutex.get(), static_cast<DWORD>(patience.count()));
    const DWORD failure = GetLastError();
    if (got == WAIT_TIMEOUT)
        throw std::runtime_error("timed out after " + std::to_string(patience.count() / 1000) +
                                 " s waiting for another publisher to leave " + name_of(directory));
    if (got != WAIT_OBJECT_0 && got != WAIT_ABANDONED) fail("cannot lock " + name_of(directory), failure);
}

DirectoryLock::~DirectoryLock() {
    ReleaseMutex(state_->mutex.get());
}

} // namespace orvane
