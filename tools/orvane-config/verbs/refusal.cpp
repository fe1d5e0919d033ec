// The first step of verbs that use the settings of a line: accepting or refusing it.
#include "verbs/refusal.hpp"

#include "printing/json.hpp"
#include "printing/verdict_text.hpp"
#include "verbs/given_ids.hpp"

#include <ostream>

namespace orvane {

ExitCode verdict_code(const Call& call, const Verdict& verdict) {
    if (!verdict.accepted()) return ExitCode::negative;
    return call.has(own("strict")) && !verdict.warnings.empty() ? ExitCode::warned : ExitCode::done;
}

std::string acceptance(ExitCode code, std::size_t warnings) {
    if (code != ExitCode::warned) return "configuration accepted\n";
    return "accepted, but --strict fails on " + std::to_string(warnings) +
           (warnings == 1 ? " warning\n" : " warnings\n");
}

std::optional<ExitCode> refusal(const Call& call, const Verdict& verdict) {
    const ExitCode code = verdict_code(call, verdict);
    if (code == ExitCode::done)
        call.err << verdict.answer.text; // it ends with a line end
    else if (call.wants_json())
        call.out << check_json(verdict) << '\n';
    else
        print_verdict(verdict, call.err, wanted_ids(call));
    return code == ExitCode::done ? std::nullopt : std::optional(code);
}

} // namespace orvane
