// One file of flags, or one process, read; and where the server's own words begin in it.
#pragma once

#include "explaining/verdict.hpp"
#include "formats/format_table.hpp"
#include "formats/source_files.hpp"
#include "verbs/call.hpp"

#include <string>

namespace orvane {

/// A file of flags.
struct Source {
    std::string path;
    std::string name; ///< for people
    bool is_process;
};

struct Content {
    const LineFormat& format;
    ReadTokens tokens;
    bool has_program; ///< the first token is certainly the program
};

/// Throws std::runtime_error with the place of what cannot be read.
Content content_in(const Call& call, const Source& source, SourceFiles& files);

SourcePlace place_in(const SourceFiles& files, const Source& source, Spot spot);

/// A first token that is no flag, before flags. `before` comes from other files.
bool begins_with_program(const Tokens& before, const Tokens& tokens);

} // namespace orvane
