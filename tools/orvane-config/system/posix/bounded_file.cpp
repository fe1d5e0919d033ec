// Files of any kind and size, read without harm, on POSIX.
#include "system/bounded_file.hpp"

#include "system/posix/descriptor.hpp"

#include "qel/util/native_path.hpp"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {
namespace {

using Outcome = BoundedFile::Outcome;

BoundedFile failure() {
    const int error = errno;
    BoundedFile result{Outcome::failed, std::generic_category().message(error)};
    if (error == ENOENT || error == ENOTDIR) result.outcome = Outcome::missing;
    if (error == EACCES || error == EPERM) result.outcome = Outcome::no_access;
    return result;
}

BoundedFile not_a_file(mode_t mode) {
    const char* const kind = S_ISDIR(mode)    ? "a directory"
                             : S_ISFIFO(mode) ? "a pipe"
                             : S_ISSOCK(mode) ? "a socket"
                                              : "a device";
    return {Outcome::not_a_file, kind};
}

/// It may have grown since its size was looked at.
BoundedFile read_from(int file, std::size_t limit, Reads reads) {
    BoundedFile result{Outcome::read, std::string(limit + 1, '\0')};
    std::size_t size = 0;
    while (size <= limit) {
        const ssize_t count = read(file, result.text.data() + size, limit + 1 - size);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return failure();
        size += static_cast<std::size_t>(count);
        if (count == 0 || reads == Reads::once) break;
    }
    if (size > limit) return {Outcome::too_large, {}};
    result.text.resize(size);
    return result;
}

} // namespace

BoundedFile read_bounded(const qel::util::filesystem::Path& path, std::size_t limit, Reads reads) {
    const std::string name = qel::util::filesystem::native(path).string();
    struct stat entry {};
    if (stat(name.c_str(), &entry) != 0) return failure();
    if (!S_ISREG(entry.st_mode)) return not_a_file(entry.st_mode);
    if (entry.st_size == 0 && reads == Reads::to_the_end) return {Outcome::read, {}};
    // Something else may have taken its place since.
    const Descriptor file(open(name.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (file.get() < 0 || fstat(file.get(), &entry) != 0) return failure();
    if (!S_ISREG(entry.st_mode)) return not_a_file(entry.st_mode);
    if (entry.st_size > static_cast<off_t>(limit)) return {Outcome::too_large, {}};
    return read_from(file.get(), limit, reads);
}

} // namespace orvane
