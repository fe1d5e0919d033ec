// The verb `fix`: the corrected line.
#include "printing/verdict_text.hpp"
#include "probing/occurrence_text.hpp"
#include "verbs/given_ids.hpp"
#include "verbs/input.hpp"

#include <algorithm>
#include <ostream>

namespace orvane {
namespace {

/// The line that was refused, as far as it can be fixed.
ExitCode fix_refused(const Verdict& verdict, const Call& call) {
    std::ostream& err = call.err;
    print_fixes(verdict, err, wanted_ids(call));
    const Diagnosis& diagnosis = verdict.diagnosis;
    call.out << shown(diagnosis.fixed) << '\n';
    const bool has_placeholder = std::any_of(diagnosis.fixed.begin(), diagnosis.fixed.end(),
                                             [](const Token& token) { return !token.sample.empty(); });
    if (has_placeholder) err << "orvane-config: replace each <value> before you use this command line\n";
    if (!diagnosis.complete || !diagnosis.problems.empty()) return ExitCode::negative;
    if (has_placeholder) return ExitCode::warned;
    print_verdict(judge(tokens_of({diagnosis.fixed}), false, ignored_warnings(call)), err);
    return ExitCode::done;
}

} // namespace

ExitCode verb::fix(const Call& call) {
    const Verdict verdict = judge(input_of(call), false, ignored_warnings(call));
    if (verdict.answer.code) return fix_refused(verdict, call);
    print_verdict(verdict, call.err, wanted_ids(call));
    call.out << shown(tokens_in(verdict.line)) << '\n';
    return verdict.accepted() ? ExitCode::done : ExitCode::negative;
}

} // namespace orvane
