// The few questions that are put to the operating system's file system, supplied for each system.
#pragma once

#include "qel/util/path.hpp"

#include <string>
#include <string_view>

namespace qel::util::filesystem {

/// What the file system says about one entry.
struct Entry {
    enum class Kind {
        missing, // or out of reach: the rest of a path is then text
        plain,   // there, under the very text that was asked about
        link,    // `target` is a path, still to be followed from the link's directory
        resolved // `target` is the entry's own canonical text
    };
    Kind kind = Kind::missing;
    std::u16string target{};
};

/// Asks about the entry at `path`, whose parent is canonical already.
Entry look_up(const std::u16string& path);

/// The absolute path at which a path with this root begins; for an empty root the current directory. Empty
/// when the system cannot tell.
std::u16string starting_point(std::u16string_view root);

/// Removes the file at `path`, never a directory. A failure is ignored.
void remove_file(const Path& path);

} // namespace qel::util::filesystem
