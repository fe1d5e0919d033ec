// The library's verdict on a command line, and all that can be said about it.
#pragma once

#include "explaining/advice.hpp"
#include "explaining/warnings.hpp"
#include "probing/source_places.hpp"

#include <string>
#include <vector>

namespace orvane {

struct Verdict {
    CommandLine line;
    SourcePlaces places{};         ///< of the tokens, where the verb has read them from files
    Answer answer;                 ///< the library's, for the line as given
    Diagnosis diagnosis;           ///< of an accepted line, without faults
    std::vector<Advice> advice;    ///< for each fault of the diagnosis
    Effects effects;               ///< of an accepted line
    std::vector<Warning> warnings; ///< about an accepted line

    /// Whether the server would start with it.
    bool accepted() const;
    /// Whether there is nothing to say about it.
    bool clean() const { return accepted() && warnings.empty() && answer.text.empty(); }
    /// What `check` ends with.
    boost::system::error_code code() const;
};

Verdict judge(const Tokens& tokens, bool with_origins, const WarningIds& ignored = {});

} // namespace orvane
