// The verb `fix`: the corrected line.
#include "printing/json.hpp"
#include "printing/verdict_text.hpp"
#include "probing/occurrence_text.hpp"
#include "verbs/given_ids.hpp"
#include "verbs/input.hpp"
#include "verbs/refusal.hpp"
#include "verbs/written.hpp"

#include <algorithm>
#include <ostream>
#include <utility>
#include <vector>

namespace orvane {
namespace {

void print_line(std::vector<Token> tokens, const Call& call) {
    if (!call.has(own("to"))) {
        call.out << shown(tokens) << '\n';
        return;
    }
    for (Token& token : tokens)
        if (!token.sample.empty()) token.text = u"<value>";
    call.out << written(call, occurrences_of(tokens_of({std::move(tokens)})));
}

bool has_placeholder(const Diagnosis& diagnosis) {
    return std::any_of(diagnosis.fixed.begin(), diagnosis.fixed.end(),
                       [](const Token& token) { return !token.sample.empty(); });
}

/// How it ends with a line that was refused, as far as it can be fixed.
ExitCode fix_refused(const Verdict& verdict, const Call& call) {
    const Diagnosis& diagnosis = verdict.diagnosis;
    if (!diagnosis.complete || !diagnosis.problems.empty()) return ExitCode::negative;
    if (has_placeholder(diagnosis)) return ExitCode::warned;
    const Verdict left = judge(tokens_of({diagnosis.fixed}), false, ignored_warnings(call));
    if (!call.wants_json()) print_verdict(left, call.err);
    return verdict_code(call, left);
}

} // namespace

ExitCode verb::fix(const Call& call) {
    const Verdict verdict = judge(input_of(call), false, ignored_warnings(call));
    if (call.has(own("quiet")) && verdict.clean()) return ExitCode::done;
    const bool refused = bool(verdict.answer.code);
    if (call.wants_json()) {
        call.out << fix_json(verdict) << '\n';
        return refused ? fix_refused(verdict, call) : verdict_code(call, verdict);
    }
    if (!refused) {
        print_verdict(verdict, call.err, wanted_ids(call));
        print_line(tokens_in(verdict.line), call);
        return verdict_code(call, verdict);
    }
    print_fixes(verdict, call.err, wanted_ids(call));
    print_line(verdict.diagnosis.fixed, call);
    if (has_placeholder(verdict.diagnosis))
        call.err << "orvane-config: replace each <value> before you use this command line\n";
    return fix_refused(verdict, call);
}

} // namespace orvane
