// One call of a verb: what it was given, and where it answers.
#pragma once

#include "system/tokens.hpp"
#include "verbs/option_table.hpp"

#include <iosfwd>
#include <map>
#include <stdexcept>
#include <string>

namespace orvane {

/// Thrown by whoever finds that the tool was misused; ends it with exit code 2.
struct Misused : std::runtime_error {
    using runtime_error::runtime_error;
};

struct Call {
    const Verb& verb;
    std::ostream& out;
    std::ostream& err;
    /// The own options that were given, with their values.
    std::map<const OwnOption*, std::string> options{};
    /// Whether a -- ended them.
    bool ended = false;
    /// What is left.
    Tokens words{};

    bool has(const OwnOption& option) const { return options.contains(&option); }

    std::string value(const OwnOption& option, const std::string& without = {}) const {
        const auto given = options.find(&option);
        return given == options.end() ? without : given->second;
    }
};

/// Takes the verb's own options from `args`. Where it takes the server's flags, the first token that is no own option
/// is the first of them, unless it can only be an own option that is misspelt or another verb's. Throws Misused.
Call read_call(const Verb& verb, const Tokens& args, std::ostream& out, std::ostream& err);

} // namespace orvane
