// What the system makes of a file that it is told to run, from the file's first bytes.
#pragma once

#include "qel/util/path.hpp"

#include <string>

namespace orvane {

struct ProgramStart {
    enum class Kind {
        program,
        script,  ///< another program runs it
        not_run, ///< in no format that the system runs, or for another processor
        unclear, ///< not run as such, but this system was taught to run more
        unread,  ///< this user may not read it
    };

    Kind kind;
    std::string interpreter{}; ///< of a script: the program, as its first line names it
    std::string argument{};    ///< of a script: what follows there, which is passed as one argument
    std::string what{};        ///< of the third and fourth: a clause without a subject
    std::string advice{};      ///< a sentence
};

ProgramStart start_of(const qel::util::filesystem::Path& file);

} // namespace orvane
