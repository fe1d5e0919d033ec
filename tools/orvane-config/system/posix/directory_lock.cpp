// A directory for one publisher at a time, on POSIX.
#include "system/directory_lock.hpp"

#include "system/posix/descriptor.hpp"

#include "qel/util/native_path.hpp"

#include <cerrno>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace orvane {
namespace {

using qel::util::filesystem::Path;

std::string name_of(const Path& directory) {
    return qel::util::filesystem::native(directory).string();
}

/// The byte that stands for a process. A directory has none; a lock does not mind.
struct flock byte_of(unsigned pid, short kind) {
    struct flock byte {};
    byte.l_type = kind;
    byte.l_whence = SEEK_SET;
    byte.l_start = static_cast<off_t>(pid);
    byte.l_len = 1;
    return byte;
}

/// The command does not inherit it: it may leave processes that never end.
int open_directory(const Path& path) {
    return open(name_of(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

} // namespace

struct DirectoryLock::State {
    Descriptor directory;
    std::string name;
};

DirectoryLock::DirectoryLock(const Path& directory)
    : state_(new State{Descriptor(open_directory(directory)), name_of(directory)}) {
    if (state_->directory.get() < 0)
        throw std::system_error(errno, std::generic_category(), "cannot open " + state_->name);
}

DirectoryLock::~DirectoryLock() = default;

bool DirectoryLock::try_to_lock() {
    if (flock(state_->directory.get(), LOCK_EX | LOCK_NB) == 0) return true;
    if (errno == EWOULDBLOCK || errno == EINTR) return false;
    throw std::system_error(errno, std::generic_category(), "cannot lock " + state_->name);
}

// A second kind of lock, because one can ask for it without taking it, and nobody else has a use for it here.
void DirectoryLock::answer_for(unsigned pid) {
    const struct flock byte = byte_of(pid, F_RDLCK);
    // Where the file system has no such locks, the process is looked for by its number alone.
    static_cast<void>(fcntl(state_->directory.get(), F_OFD_SETLK, &byte));
}

bool is_answered_for(const Path& path, unsigned pid) {
    const Descriptor directory(open_directory(path));
    struct flock byte = byte_of(pid, F_WRLCK);
    return directory.get() >= 0 && fcntl(directory.get(), F_OFD_GETLK, &byte) == 0 && byte.l_type != F_UNLCK;
}

} // namespace orvane
