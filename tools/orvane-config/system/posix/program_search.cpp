// Where POSIX looks for programs.
#include "system/program_search.hpp"

#include "qel/i18n/convert.hpp"

#include <cstdlib>
#include <sstream>

namespace orvane {

ProgramSearch program_search() {
    ProgramSearch search{{}, {u""}};
    const char* const path = std::getenv("PATH");
    // An empty element means the current directory, also at the end.
    std::istringstream list((path == nullptr ? std::string("/usr/bin:/bin") : path) + ":");
    for (std::string one; std::getline(list, one, ':');)
        search.directories.emplace_back(one.empty() ? u"." : qel::i18n::utf8_to_ustring(one));
    return search;
}

bool names_a_place(const std::u16string& program) {
    return program.find(u'/') != program.npos;
}

} // namespace orvane
