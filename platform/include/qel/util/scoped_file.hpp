// Ownership of one file on disk: the owner removes the file when it is destroyed.
#pragma once

#include "qel/util/path.hpp"

namespace qel::util::filesystem {

/// Owns the file at a path and removes it on destruction. Movable, not copyable. The path is stored as given: after the
/// process has changed its current directory, a relative path names another file, and that one is removed.
class ZEP_CONFIG_PLATFORM_API scoped_file {
public:
    /// Owns nothing.
    scoped_file() noexcept;
    /// Takes ownership of the file at `path`, which need not exist yet.
    explicit scoped_file(Path path) noexcept;
    scoped_file(const scoped_file&) = delete;
    /// The moved-from object owns nothing and removes nothing.
    scoped_file(scoped_file&& other) noexcept;
    scoped_file& operator=(const scoped_file&) = delete;
    /// Removes the file owned so far, unless the other object owns exactly the same path. Then takes over the other's
    /// file.
    scoped_file& operator=(scoped_file&& other) noexcept;
    /// Removes the file. A failure to do so is ignored. On Windows a file that another process has open cannot be
    /// removed; the destructor tries for a tenth of a second.
    ~scoped_file();

    /// The owned file's path; empty if nothing is owned.
    const Path& path() const noexcept;

private:
    void remove() noexcept;

    Path path_{};
};

} // namespace qel::util::filesystem
