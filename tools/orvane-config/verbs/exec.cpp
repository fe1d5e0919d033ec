// The verb `exec`: the server with checked flags.
#include "printing/verdict_text.hpp"
#include "verbs/input.hpp"
#include "verbs/look_around.hpp"

#include <ostream>

namespace orvane {

ExitCode exec(const Call& call) {
    const Input input = input_of(call);
    if (!input.command) throw Misused("no command: put it after FLAGS and '--'");
    const Verdict verdict = judge(input, true);
    if (!verdict.accepted()) {
        explain(verdict, call.err);
        return ExitCode::refused;
    }
    if (call.has(own("preflight"))) {
        const readiness::Report report = look_around(call, verdict);
        if (!report.ready()) {
            call.err << to_text(report);
            return ExitCode::not_ready;
        }
    }
    call.successor = *input.command;
    call.successor.insert(call.successor.end(), input.flags.begin(), input.flags.end());
    return ExitCode::done;
}

} // namespace orvane
