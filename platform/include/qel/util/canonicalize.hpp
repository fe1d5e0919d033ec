// Canonical forms of paths: two spellings of one directory come out equal.
#pragma once

#include "qel/util/path.hpp"

#include <memory>

namespace qel::util::filesystem {

/// The canonical form of `path`: absolute, with symbolic links resolved as far as the path exists, "." and ".."
/// resolved, and no trailing separator except at a root. The path need not exist; what follows the last existing
/// element is resolved as text. The canonical form of the empty path is empty.
///
/// ".." has the system's meaning: after a link, it is the parent of the link's target on POSIX, and the parent of the
/// link itself on Windows. On Windows the form also has the spelling that is on disk. A chain of more than 40 links,
/// and a path that is too long for the system, count as not existing. Reads the file system and changes nothing. Throws
/// only std::bad_alloc.
ZEP_CONFIG_PLATFORM_API Path canonicalize(const Path& path);

ZEP_CONFIG_PLATFORM_QUIET_BEGIN
/// Computes canonical forms of many related paths. An object asks the file system about each entry once, and does not
/// notice later changes, including a change of the current directory. Do not share it between threads.
class ZEP_CONFIG_PLATFORM_API Canonicalizer {
public:
    /// Knows nothing yet. Throws std::bad_alloc.
    Canonicalizer();
    Canonicalizer(const Canonicalizer&) = delete;
    Canonicalizer& operator=(const Canonicalizer&) = delete;
    ~Canonicalizer();

    /// The same as the function of this name. Throws only std::bad_alloc.
    Path canonicalize(const Path& path);

    /// Whether `root` has the same canonical form as `path` or one of its parents. The parents are those that repeated
    /// parent_path() steps reach: the current directory, in which a relative path starts, is not one of them. An empty
    /// path equals only an empty one. Takes time linear in the path's length, not counting symbolic links. Throws only
    /// std::bad_alloc.
    bool is_same_or_below(const Path& path, const Path& root);

private:
    struct Memo;
    std::unique_ptr<Memo> memo_;
};
ZEP_CONFIG_PLATFORM_QUIET_END

} // namespace qel::util::filesystem
