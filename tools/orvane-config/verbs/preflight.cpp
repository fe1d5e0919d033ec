// The verb `preflight`: will the server start on this machine?
#include "printing/json.hpp"
#include "printing/preflight_json.hpp"
#include "printing/preflight_text.hpp"
#include "printing/security_text.hpp"
#include "printing/verdict_text.hpp"
#include "verbs/given_ids.hpp"
#include "verbs/input.hpp"
#include "verbs/listed.hpp"
#include "verbs/preflight_report.hpp"
#include "verbs/refusal.hpp"

#include <ostream>
#include <utility>
#include <vector>

namespace orvane {
namespace {

ExitCode exit_code(const preflight::Report& report, const Verdict& verdict, bool strict) {
    if (!report.clear()) return ExitCode::not_ready;
    const bool warned = report.count(preflight::Severity::warning) != 0 || !verdict.warnings.empty();
    return strict && warned ? ExitCode::warned : ExitCode::done;
}

/// The flags, then the groups.
void list_report(const Call& call, const Verdict& verdict, const preflight::Report& report) {
    std::vector<Case> cases = cases_of(report);
    cases.insert(cases.begin(), case_of(name_of(call, verdict), verdict));
    list(call, std::move(cases));
}

ExitCode refuse(const Call& call, const Verdict& verdict) {
    if (call.wants_json())
        call.out << check_json(verdict) << '\n';
    else if (call.wants_list())
        list_report(call, verdict, nothing_looked_at());
    else
        print_verdict(verdict, call.err, wanted_ids(call));
    return ExitCode::negative;
}

} // namespace

ExitCode verb::preflight(const Call& call) {
    const WarningIds ignored = ignored_warnings(call, findings_to_ignore());
    Verdict verdict = judge(input_of(call), true, ignored);
    const bool json = call.wants_json(), quiet = call.has(own("quiet"));
    if (!verdict.accepted()) return refuse(call, verdict);
    preflight::Report report = preflight_report(call, verdict, ignored);
    verdict.warnings = not_repeated(std::move(verdict.warnings), report);
    const ExitCode code = exit_code(report, verdict, call.has(own("strict")));
    if (call.wants_list()) {
        list_report(call, verdict, report);
        return code;
    }
    if (!json) print_verdict(verdict, call.err, wanted_ids(call));
    const std::size_t warnings = report.count(preflight::Severity::warning) + verdict.warnings.size();
    const bool silent = quiet && !keep_problems(report);
    if (json && !(silent && verdict.clean()))
        call.out << preflight_json(verdict, report) << '\n';
    else if (!json && !silent)
        call.out << (quiet ? "" : acceptance(code, warnings)) << to_text(report);
    if (call.has(own("security")) && !json && !quiet)
        call.out << "security of these settings: "
                 << worst_of(look_at_hazards(verdict.line, verdict.answer, verdict.effects, ignored))
                 << "; 'orvane-config check --security' says why\n";
    return code;
}

} // namespace orvane
