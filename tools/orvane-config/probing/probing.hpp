// What can be learnt of a command line by asking the library: it is parsed again in part, with changes, and the verdicts
// and records are compared. Nothing here knows how a value is parsed or what a rule says.
#pragma once

#include "text/tokens.hpp"

#include "qel/config/server_settings.hpp"

#include <boost/system/error_code.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace orvane {

/// A token, and its number on the command line, counted from 1; 0 when it was never there.
struct Token {
    std::u16string text;
    std::size_t number = 0;
    std::u16string
        sample{}; ///< of a value that nobody gave, or the value with the <name> of a part that has to be
                  ///< replaced; else empty

    bool asks_for_a_part() const { return sample.starts_with(u'<'); }
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

CommandLine without(CommandLine line, std::size_t position);

/// One after the other.
std::vector<Token> tokens_in(const CommandLine& line);
Tokens tokens_of(const CommandLine& line);

} // namespace orvane
