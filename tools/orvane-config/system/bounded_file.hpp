// Files of any kind and size, read without harm.
#pragma once

#include "qel/util/path.hpp"

#include <cstddef>
#include <string>

namespace orvane {

/// What came of reading a file.
struct BoundedFile {
    enum class Outcome {
        read,
        missing,
        no_access, ///< this user may not read it, or may not enter a directory on the way
        not_a_file, ///< a directory, a pipe, a device; not opened, because that can hang or take something from it
        too_large,
        failed,
    };

    Outcome outcome = Outcome::failed;
    /// The content if it was read; else what is there instead, or the system's reason.
    std::string text{};
};

enum class Reads {
    to_the_end, ///< what has no size is not read: files of the kernel can wait, or give each text only once
    once,       ///< a second time could get the rest of another content, written meanwhile
};

/// The content of a regular file of at most `limit` bytes.
BoundedFile read_bounded(const qel::util::filesystem::Path& path, std::size_t limit,
                         Reads reads = Reads::to_the_end);

} // namespace orvane
