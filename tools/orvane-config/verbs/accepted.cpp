// The first step of verbs that need the settings of a line: accepting or refusing it.
#include "verbs/accepted.hpp"

#include "printing/verdict_text.hpp"

#include <ostream>

namespace orvane {

std::optional<qel::config::ServerSettings> accepted(const Input& input, std::ostream& err) {
    Answer answer = ask(input.flags);
    qel::config::ProblemList problems;
    qel::config::FlagSet involved;
    if (!answer.code && !qel::config::validate_settings(answer.settings, problems, involved)) {
        // What the library says about an accepted line already ends with a line end.
        err << answer.text;
        return std::move(answer.settings);
    }
    print_verdict(judge(input, false), err);
    return std::nullopt;
}

} // namespace orvane
