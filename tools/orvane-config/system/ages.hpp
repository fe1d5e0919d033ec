// How old processes and files are, and which process this is.
#pragma once

#include "qel/util/path.hpp"

#include <chrono>
#include <optional>

namespace orvane {

/// The identifier of this process.
unsigned own_pid();

/// How long ago the process started; none when there is no such process, or it has ended and only waits to be
/// collected. For a process that cannot be asked, a time longer ago than any file.
std::optional<std::chrono::milliseconds> process_age(unsigned pid);

/// How long ago the file was last written; none when that cannot be found out.
std::optional<std::chrono::milliseconds> file_age(const qel::util::filesystem::Path& file);

} // namespace orvane
