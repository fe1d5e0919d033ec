// What a verb begins with that works on the settings of a line.
#include "verbs/accepted.hpp"

#include "printing/verdict_text.hpp"

#include <ostream>

namespace orvane {

std::optional<qel::config::ServerSettings> accepted(const Tokens& flags, std::ostream& err) {
    Answer answer = ask(flags);
    qel::config::ProblemList problems;
    qel::config::FlagSet involved;
    if (!answer.code && !qel::config::validate_settings(answer.settings, problems, involved)) {
        // What the library has to say of an accepted line ends its lines.
        err << answer.text;
        return std::move(answer.settings);
    }
    explain(judge(flags, false), err);
    return std::nullopt;
}

} // namespace orvane
