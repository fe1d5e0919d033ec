// One call of a verb: what it was given, and where it answers.
#pragma once

#include "own/exit_code.hpp"
#include "own/option_table.hpp"
#include "printing/remarks.hpp"
#include "redacting/redactor.hpp"
#include "text/tokens.hpp"

#include <functional>
#include <iosfwd>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace orvane {

/// Thrown by whoever finds that the tool was misused; ends it with exit code 2.
struct Misused : std::runtime_error {
    using runtime_error::runtime_error;
};

/// The same, with a text that repeats no word of the call.
struct MisusedInPublic : Misused {
    using Misused::Misused;
};

struct Call {
    const Verb& verb;
    std::ostream& out;
    std::ostream& err;
    /// The own options that were given, with their values, in order.
    std::vector<std::pair<const OwnOption*, std::string>> options{};
    /// Whether a -- ended them.
    bool ended = false;
    /// Files and directories that are named without an option, for a verb to which each file is a configuration.
    std::vector<std::string> files{};
    /// What is left.
    Tokens words{};
    /// The command that the tool becomes when the verb has answered.
    mutable Tokens successor{};
    /// Of a call of this tool that a file contains: where its absolute paths begin.
    std::optional<std::string> root{};
    std::map<std::string, std::string> contained{}; ///< and the files that are in the same file
    /// What `check` says about the configuration in a word.
    mutable std::string brief{};
    /// What a verb says in a format that lists remarks.
    mutable std::vector<Case> cases{};
    /// For all that the verb prints with --redact.
    mutable redacting::Redactor redactor{};
    /// Shows what `err` was told so far: for a verb that then waits.
    std::function<void()> tell{};

    bool wants_json() const { return value(own("format")) == "json"; }
    /// Remarks in a list, for editors or CI.
    bool wants_list() const { return has(own("format")) && !wants_json() && value(own("format")) != "text"; }

    bool has(const OwnOption& option) const { return given(option) != options.rend(); }

    /// The last one that was given.
    std::string value(const OwnOption& option, const std::string& without = {}) const {
        const auto last = given(option);
        return last == options.rend() ? without : last->second;
    }

private:
    std::vector<std::pair<const OwnOption*, std::string>>::const_reverse_iterator
    given(const OwnOption& option) const {
        return std::find_if(options.rbegin(), options.rend(),
                            [&](const auto& one) { return one.first->name == option.name; });
    }
};

/// The functions of the verbs, each in a file of its name.
namespace verb {
using Run = ExitCode(const Call& call);
Run check, fix, diff, convert, preflight, status, exec, publish, explain, completions;
} // namespace verb

/// The words of this tool for what they begin with; `err` learns that it is called something else here.
Tokens in_own_words(const Tokens& words, std::ostream& err);

/// Takes the verb's own options from `args`. Where it takes the server's flags, the first token that is no own option
/// is the first of them, unless it can only be an own option that is misspelt or another verb's. Throws Misused.
Call read_call(const Verb& verb, const Tokens& args, std::ostream& out, std::ostream& err);

} // namespace orvane
