// All that is wrong with a command line, found by fixing each fault and asking again.
#pragma once

#include "probing/working_line.hpp"

#include "qel/config/validate_settings.hpp"

#include <functional>
#include <optional>

namespace orvane {

/// What to put in the place of adjacent tokens of the line as it was given.
struct Fix {
    std::vector<std::size_t> tokens{}; ///< their numbers, ascending; none: at the end of the line
    std::vector<Token> replacement{};
};

/// One refusal, when all before it are fixed.
struct Fault {
    boost::system::error_code code;
    std::string text;         ///< the library's
    Occurrence occurrence;    ///< that is refused; empty when the line as a whole is
    Occurrence before, after; ///< its neighbours, where there are any
    bool more_before = false, more_after = false;
    std::optional<Fix> fix{}; ///< where one can be proposed
};

/// A fault, and where it is in a line in which all before it are fixed.
struct FaultInLine {
    const Fault& fault;
    const WorkingLine& line;
    std::size_t at; ///< the refused occurrence; the line's size when the line as a whole is refused

    const Occurrence& occurrence() const { return line[at]; }
    const std::u16string& token() const { return occurrence()[0].text; }
    std::size_t number() const { return occurrence()[0].number; }
    const Occurrence* before() const { return at == 0 ? nullptr : &line[at - 1]; }
    const Occurrence* after() const { return at + 1 < line.size() ? &line[at + 1] : nullptr; }
};

/// Occurrences for the place of those in [begin, end) of a line.
struct Edit {
    std::size_t begin = 0, end = 0;
    CommandLine occurrences{};
    bool proposed = true; ///< else it only lets the rest be looked at
};

/// The first fault as the library reports it, then those that it would report once the ones before are fixed, and the
/// problems of the record that comes out at the end.
struct Diagnosis {
    std::vector<Fault> faults{};
    qel::config::ProblemList problems{};
    qel::config::FlagSet involved{};
    /// The line with every fix in it; what no fix could be proposed for is as it was.
    std::vector<Token> fixed{};
    bool complete = true; ///< whether there was a fix for every fault
};

/// What lets a line go on after a fault.
using FindEdit = std::function<Edit(const FaultInLine&)>;

/// `answer` is the library's, for the tokens.
Diagnosis diagnose(const Tokens& tokens, const Answer& answer, const FindEdit& find_edit);

/// The first occurrence of the line that is refused, and the library's answer; the line's size when all are taken.
std::size_t first_refused(const CommandLine& line, Answer& refusal);

} // namespace orvane
