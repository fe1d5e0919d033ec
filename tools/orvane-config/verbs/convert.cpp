// The verb `convert`: the same flags in another format.
#include "printing/verdict_text.hpp"
#include "probing/tidying.hpp"
#include "verbs/input.hpp"
#include "verbs/written.hpp"

#include <ostream>

namespace orvane {
ExitCode verb::convert(const Call& call) {
    if (call.has(own("redact")) && call.has(own("program")))
        throw MisusedInPublic("--redact and --program exclude each other");
    const Input input = input_of(call);
    CommandLine line = occurrences_of(input.flags);
    if (call.has(own("tidy"))) {
        const Verdict verdict = judge(input, true);
        if (!verdict.accepted()) {
            print_verdict(verdict, call.err);
            return ExitCode::negative;
        }
        if (auto tidy = tidied(line, verdict.answer, verdict.effects))
            line = std::move(*tidy);
        else
            call.err << "orvane-config: nothing can be moved or left out safely\n";
    }
    call.out << written(call, line, input.program);
    return ExitCode::done;
}

} // namespace orvane
