// Directories for one publisher at a time, on POSIX.
#include "system/directory_lock.hpp"

#include "system/posix/descriptor.hpp"

#include "qel/util/native_path.hpp"

#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {
namespace {

using qel::util::filesystem::native;
using qel::util::filesystem::Path;

[[noreturn]] void fail(const std::string& what) {
    throw std::system_error(errno, std::generic_category(), what);
}

struct flock lock_of(short kind, off_t first, off_t length) {
    struct flock lock {};
    lock.l_type = kind;
    lock.l_whence = SEEK_SET;
    lock.l_start = first;
    lock.l_len = length;
    return lock;
}

/// The byte that stands for a process. The file has none there; a lock does not mind.
struct flock byte_of(unsigned pid, short kind) {
    return lock_of(kind, static_cast<off_t>(pid), 1);
}

/// Whether the file has the name: a publisher that leaves removes its own.
bool is_at(const std::string& name, int file) {
    struct stat opened {
    }, there{};
    return fstat(file, &opened) == 0 && lstat(name.c_str(), &there) == 0 && opened.st_ino == there.st_ino &&
           opened.st_dev == there.st_dev;
}

} // namespace

std::string identity_of(const Path& directory) {
    struct stat entry {};
    const std::string name = native(directory).string();
    if (stat(name.c_str(), &entry) != 0) fail("cannot open " + name);
    return std::to_string(entry.st_dev) + "-" + std::to_string(entry.st_ino);
}

struct DirectoryLock::State {
    std::string name;
    std::unique_ptr<Descriptor> file{}; ///< while the lock is ours
    pid_t holder = 0;
};

DirectoryLock::DirectoryLock(const Path& directory)
    : state_(new State{(native(directory) / ".orvane-config.lock").string()}) {}

DirectoryLock::~DirectoryLock() {
    if (state_->file) unlink(state_->name.c_str());
}

// Not the directory itself, which everybody who may list it could lock.
bool DirectoryLock::try_to_lock() {
    // The command does not inherit it: it may leave processes that never end.
    constexpr int flags = O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    auto file = std::make_unique<Descriptor>(open(state_->name.c_str(), flags, S_IRUSR | S_IWUSR));
    if (file->get() < 0 && errno == ELOOP)
        throw std::runtime_error("cannot lock " + state_->name + ": it is a symbolic link; remove it");
    if (file->get() < 0) fail("cannot lock " + state_->name);
    struct flock all = lock_of(F_WRLCK, 0, 0);
    if (fcntl(file->get(), F_SETLK, &all) != 0) {
        if (errno != EAGAIN && errno != EACCES) fail("cannot lock " + state_->name);
        // Of another pid namespace it is 0.
        state_->holder = fcntl(file->get(), F_GETLK, &all) == 0 && all.l_type != F_UNLCK ? all.l_pid : 0;
        return false;
    }
    if (!is_at(state_->name, file->get())) return false;
    state_->file = std::move(file);
    return true;
}

unsigned DirectoryLock::holder() const {
    return static_cast<unsigned>(state_->holder);
}

// A lock for writing can be had only by those who could write the number as well. The kind that belongs to the open file:
// the other kind would be gone when this process closes the file after reading it.
std::shared_ptr<void> answer_for(const Path& pid_file, unsigned pid) {
    const auto file =
        std::make_shared<Descriptor>(open(native(pid_file).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666));
    const struct flock byte = byte_of(pid, F_WRLCK);
    // Where the file system has no such locks, the process is looked for by its number alone.
    static_cast<void>(fcntl(file->get(), F_OFD_SETLK, &byte));
    return file;
}

bool is_answered_for(const Path& pid_file, unsigned pid) {
    const Descriptor file(open(native(pid_file).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct flock byte = byte_of(pid, F_RDLCK);
    return file.get() >= 0 && fcntl(file.get(), F_OFD_GETLK, &byte) == 0 && byte.l_type != F_UNLCK;
}

} // namespace orvane
