// What can be learnt of a command line by asking the library: it is parsed again in part, with changes, and the verdicts
// and records are compared. Nothing here knows how a flag is parsed or what a rule says.
#pragma once

#include "system/tokens.hpp"

#include "qel/config/validate_settings.hpp"

#include <boost/system/error_code.hpp>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace orvane {

/// A token, and its number on the command line, counted from 1; 0 when it was never there.
struct Token {
    std::u16string text;
    std::size_t number = 0;
    bool invented = false; ///< it stands for one that the server did not take
};

/// A flag with its value, a switch, or a token that is no flag.
using Occurrence = std::vector<Token>;
using CommandLine = std::vector<Occurrence>;

/// What the library says of a list of tokens.
struct Answer {
    boost::system::error_code code;
    std::string text;
    qel::config::ServerSettings settings;

    /// Whether every token was taken; the required flag may be missing.
    bool consumed() const;
};

/// About tokens, which are parsed into `record`.
Answer ask(const Tokens& tokens, qel::config::ServerSettings record = {});
Answer ask(const CommandLine& line);

enum class FlagKind { no_flag, switch_flag, value_flag };

/// What the library takes the token for at the start of a line.
FlagKind kind_of(const std::u16string& token);

/// The occurrences of the tokens, numbered from 1, as the library would take them.
CommandLine occurrences_of(const Tokens& tokens);

/// The occurrence with everything it needs: a switch, or a flag with a value.
Occurrence occurrence_of(std::u16string flag, std::u16string value);

Tokens tokens_of(const CommandLine& line);

/// One refusal, when all before it are repaired.
struct Fault {
    boost::system::error_code code;
    std::string text;         ///< the library's
    Occurrence occurrence;    ///< that is refused; empty when the line as a whole is
    Occurrence before, after; ///< its neighbours, where there are any
    bool more_before = false, more_after = false;
};

/// All that is wrong with a line: the first fault as the library reports it, then those that it would report once the
/// ones before are repaired, and the problems of the record that comes out at the end.
struct Diagnosis {
    std::vector<Fault> faults;
    qel::config::ProblemList problems;
    qel::config::FlagSet involved;
    CommandLine repaired;
    Answer answer; ///< for the repaired line
};

/// Steps that take the place of the occurrences [begin, end) of a line.
struct Edit {
    std::size_t begin = 0, end = 0;
    CommandLine occurrences{};
};

/// What makes a line, whose occurrence at `position` is refused, one in which that fault is gone.
using Repair = std::function<Edit(const Fault& fault, const CommandLine& line, std::size_t position)>;

Diagnosis diagnose(const Tokens& tokens, const Repair& repair);

} // namespace orvane
