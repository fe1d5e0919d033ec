// Where a path begins, as the system reads it.
#pragma once

#include <string>
#include <string_view>

namespace orvane {

enum class PathAnchor {
    none,  ///< in the current directory
    drive, ///< C:name, in the current directory of a drive
    root,  ///< \name, on the current drive
    full,  ///< a root, a drive's root, a share, a device
};

PathAnchor anchor_of(std::u16string_view path);

/// The drive or share of a full path of Windows, "C:" or "\\server\share"; empty when there is none, and on other systems.
std::u16string volume_of(std::u16string_view path);

/// Whether the system separates directories with backslashes, too.
bool backslash_separates();

} // namespace orvane
