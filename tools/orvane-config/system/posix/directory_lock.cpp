// A directory for one publisher at a time, on POSIX.
#include "system/directory_lock.hpp"

#include "qel/util/native_path.hpp"

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace orvane {
namespace {

[[noreturn]] void fail(const std::string& what, int error) {
    throw std::system_error(error, std::generic_category(), what);
}

} // namespace

struct DirectoryLock::State {
    int descriptor;
};

DirectoryLock::DirectoryLock(const qel::util::filesystem::Path& directory, std::chrono::milliseconds patience)
    : state_(std::make_unique<State>()) {
    const auto name = qel::util::filesystem::native(directory);
    state_->descriptor = open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (state_->descriptor < 0) fail("cannot open " + name.string(), errno);
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (flock(state_->descriptor, LOCK_EX | LOCK_NB) != 0) {
        const int error = errno;
        const bool occupied = error == EWOULDBLOCK;
        if (occupied && std::chrono::steady_clock::now() < deadline) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        } else if (error != EINTR) {
            close(state_->descriptor);
            if (occupied)
                throw std::runtime_error("timed out after " + std::to_string(patience.count() / 1000) +
                                         " s waiting for another publisher to leave " + name.string());
            fail("cannot lock " + name.string(), error);
        }
    }
}

DirectoryLock::~DirectoryLock() {
    // A process created meanwhile still has the descriptor; closing ours alone would not unlock.
    flock(state_->descriptor, LOCK_UN);
    close(state_->descriptor);
}

} // namespace orvane
