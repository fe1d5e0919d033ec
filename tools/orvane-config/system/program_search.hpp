// Where the system looks for programs.
#pragma once

#include "qel/util/path.hpp"

#include <string>
#include <vector>

namespace orvane {

struct ProgramSearch {
    std::vector<qel::util::filesystem::Path> directories; ///< of PATH, in order
    std::vector<std::u16string> endings;                  ///< that a name may lack; the first is empty
};

ProgramSearch program_search();

/// Whether the name of a program says where it is, so that PATH is not looked at.
bool names_a_place(const std::u16string& program);

} // namespace orvane
