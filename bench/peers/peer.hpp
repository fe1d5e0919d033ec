// The parsers that this library is compared with.
#pragma once

#include "flags.hpp"

#include <array>

namespace qel::config::bench {

/// Builds the parser, unless it is static, and parses a command line; argv[0] is the program's name.
using Parse = void(int argc, char** argv, Values& values);

Parse parse_with_getopt, parse_with_argagg, parse_with_llvm, parse_with_abseil, parse_with_cxxopts,
    parse_with_cli11, parse_with_program_options;

/// abseil and LLVM keep the values in their own variables; these fetch them.
void abseil_values(Values& values);
void llvm_values(Values& values);

/// What abseil and argagg call a flag, "--https_ca_file" and "--detach-console"; any other token unchanged.
std::string abseil_token(const std::string& token);
std::string argagg_token(const std::string& token);

struct Peer {
    const char* name;
    Parse* parse;
    int repeated; ///< how many repeated flags it is measured with
    void (*fetch)(Values&) = nullptr;
    std::string (*token)(const std::string&) = nullptr; ///< if flags have other names
};

inline constexpr std::array peers = {
    Peer{"getopt_long", parse_with_getopt, 10'000},
    Peer{"argagg", parse_with_argagg, 10'000, nullptr, argagg_token},
    Peer{"LLVM cl", parse_with_llvm, 10'000, llvm_values},
    Peer{"abseil flags", parse_with_abseil, 10'000, abseil_values, abseil_token},
    Peer{"cxxopts", parse_with_cxxopts, 10'000},
    Peer{"CLI11", parse_with_cli11, 10'000},
    // Every value found is added to a copy of those found before.
    Peer{"Boost.ProgramOptions", parse_with_program_options, 1'000},
};

} // namespace qel::config::bench
