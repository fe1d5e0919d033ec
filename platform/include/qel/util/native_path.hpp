// The form of a path that file streams and other calls of the operating system take.
#pragma once

#include "qel/util/path.hpp"

#include <filesystem>

namespace qel::util::filesystem {

/// The path for std::ifstream, std::ofstream and std::filesystem: UTF-8 bytes on POSIX (ill-formed UTF-16 becomes
/// U+FFFD), the UTF-16 text on Windows, where a long path becomes absolute, with the prefix that lifts the limit of 260
/// characters. A path that contains a NUL, which no file can have, gives the empty path, which names no file. Throws
/// std::bad_alloc.
ZEP_CONFIG_PLATFORM_API std::filesystem::path native(const Path& path);

} // namespace qel::util::filesystem
