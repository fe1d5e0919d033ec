// The verb `exec`: the server with checked flags.
#include "printing/preflight_text.hpp"
#include "printing/verdict_text.hpp"
#include "verbs/input.hpp"
#include "verbs/preflight_report.hpp"

#include <ostream>

namespace orvane {

ExitCode verb::exec(const Call& call) {
    const Input input = input_of(call);
    if (!input.command) throw Misused("no command: put it after FLAGS and '--'");
    const Verdict verdict = judge(input, true);
    if (!verdict.accepted()) {
        print_verdict(verdict, call.err);
        return ExitCode::negative;
    }
    if (call.has(own("preflight"))) {
        const preflight::Report report = preflight_report(call, verdict);
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
