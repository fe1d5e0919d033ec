// Where the server's flags come from.
#pragma once

#include "explaining/verdict.hpp"
#include "verbs/call.hpp"

#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// What a verb that takes FLAGS works on.
struct Input {
    Tokens flags{};
    SourcePlaces places{};
    std::vector<std::string> drop_ins{}; ///< of units, or what looks like one; absolute
    std::u16string program{};            ///< that the flags of the first file are for
    std::optional<Tokens> command{};     ///< after the --, for a verb that takes a COMMAND
};

/// From the files and processes that options name, in the order in which they are given, then from the command line.
/// Throws Misused, and std::runtime_error when a file cannot be read or understood.
Input input_of(const Call& call);

/// The same, not yet redacted.
Input input_of_files(const Call& call);

/// The same from one option, or from a file that is named without one.
Input input_from(const Call& call, const OwnOption& option, const std::string& name);

/// The same from every option that names a file or process, each by itself.
std::vector<Input> inputs_of_options(const Call& call);

/// What people are told that a file is called.
std::string shown_name(const Call& call, const std::string& file);

/// The position of the "--" that ends the flags, or the end. One that is the value of a flag does not: that
/// is the case when the flags before it do not parse.
Tokens::const_iterator end_of_flags(const Tokens& before, const Tokens& words);

/// The verdict on the flags, which knows their places.
Verdict judge(const Input& input, bool with_origins, const WarningIds& ignored = {});

} // namespace orvane
