// The parsers that this library is compared with.
#pragma once

#include "flags.hpp"

#include <array>

namespace qel::config::bench {

/// Builds the parser, unless it is static, and parses a command line; argv[0] is the program's name.
using Parse = void(int argc, char** argv, Values& values);

Parse parse_with_getopt, parse_with_abseil, parse_with_cxxopts, parse_with_cli11, parse_with_program_options;

/// abseil keeps its values in its own variables; this fetches them.
void abseil_values(Values& values);

/// The name that abseil gives to a flag, "--https_ca_file"; any other token unchanged.
std::string abseil_token(const std::string& token);

struct Peer {
    const char* name;
    Parse* parse;
    int repeated; ///< how many repeated flags it is measured with
    void (*fetch)(Values&) = nullptr;
};

inline constexpr std::array peers = {
    Peer{"getopt_long", parse_with_getopt, 10'000},
    Peer{"abseil flags", parse_with_abseil, 10'000, abseil_values},
    Peer{"cxxopts", parse_with_cxxopts, 10'000},
    Peer{"CLI11", parse_with_cli11, 10'000},
    // Every value found is added to a copy of those found before.
    Peer{"Boost.ProgramOptions", parse_with_program_options, 1'000},
};

} // namespace qel::config::bench
