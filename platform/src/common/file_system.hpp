// The few file-system calls that differ between the operating systems; implemented for each.
#pragma once

#include "qel/util/path.hpp"

#include <string>
#include <string_view>

namespace qel::util::filesystem {

/// What the file system knows about one entry.
struct Entry {
    enum class Kind {
        missing, // or not accessible: the rest of the path is then only text
        plain,   // exists, and the text that was asked about is canonical
        link,    // `target` is a path, still to be followed from the link's directory
        resolved // `target` is the canonical text of the entry
    };
    Kind kind = Kind::missing;
    std::u16string target{};
};

/// Looks up the entry at `path`, whose parent is already canonical.
Entry look_up(const std::u16string& path);

/// The absolute path at which a path with this root begins; for an empty root, the current directory. Empty if
/// the system does not know it.
std::u16string starting_point(std::u16string_view root);

/// Removes the file at `path`, never a directory. A failure is ignored.
void remove_file(const Path& path);

} // namespace qel::util::filesystem
