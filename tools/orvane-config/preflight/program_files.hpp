// The files of programs that the server starts.
#pragma once

#include "preflight/findings.hpp"
#include "system/program_search.hpp"

#include <optional>
#include <string>

namespace orvane::preflight {

using qel::util::filesystem::Path;

/// The file at this place, with one of the endings that a name may lack; the first that there is.
std::optional<Path> with_ending(const Path& place, const ProgramSearch& search);

/// The first in PATH that can be run; else the first that is there.
std::optional<Path> in_path(const std::u16string& name, const ProgramSearch& search);

/// Why a program cannot be run, or why that cannot be told.
struct Obstacle {
    Kind kind;
    std::string what, advice;
};

/// None when the system would run the file. A script is run by other programs, which it looks at as well.
std::optional<Obstacle> obstacle_to_running(const Path& file, const ProgramSearch& search,
                                            unsigned scripts = 0);

} // namespace orvane::preflight
