// Canonical forms of paths: two spellings of one directory come out equal.
#pragma once

#include "qel/util/path.hpp"

#include <memory>

namespace qel::util::filesystem {

/// The canonical form of `path`: absolute, symbolic links resolved as far as the path exists, "." and ".."
/// folded, no trailing separator except at a root. The path need not exist; what follows the last existing
/// element is folded as text. The canonical form of the empty path is empty.
///
/// ".." means what it means to the system: on POSIX the parent of what a link before it leads to; on Windows
/// the text before that link. Windows forms also bear the spelling on disk. A chain of more than 40 links,
/// and a path longer than the system takes, count as not existing. Reads the file system, changes nothing.
/// Throws std::bad_alloc only.
ZEP_CONFIG_PLATFORM_API Path canonicalize(const Path& path);

/// Canonical forms of many related paths. During its life it asks the file system about each entry once, and
/// does not notice later changes, also not of the current directory. Not to be shared between threads.
class ZEP_CONFIG_PLATFORM_API Canonicalizer {
public:
    Canonicalizer();
    Canonicalizer(const Canonicalizer&) = delete;
    Canonicalizer& operator=(const Canonicalizer&) = delete;
    ~Canonicalizer();

    /// The canonical form, as the function of this name gives it.
    /// Throws std::bad_alloc only.
    Path canonicalize(const Path& path);

    /// Whether the canonical form of `root` is that of `path` or of one of its parents, as far as repeated
    /// parent_path() steps lead: a relative path is not compared with the current directory that it starts
    /// in. An empty path equals only an empty one. Takes time linear in the path's length, symbolic links
    /// apart. Throws std::bad_alloc only.
    bool is_same_or_below(const Path& path, const Path& root);

private:
    struct Memo;
    std::unique_ptr<Memo> memo_;
};

} // namespace qel::util::filesystem
