// How old processes and files are.
#pragma once

#include "qel/util/path.hpp"

#include <chrono>
#include <optional>

namespace orvane {

/// How long ago the process started; none when there is no such process, or it has ended and only waits to be
/// collected. Of a process that tells others nothing, a time longer ago than any file.
std::optional<std::chrono::milliseconds> process_age(unsigned pid);

/// How long ago the file was last written; none when it cannot be asked.
std::optional<std::chrono::milliseconds> file_age(const qel::util::filesystem::Path& file);

} // namespace orvane
