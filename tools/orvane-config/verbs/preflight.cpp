// The verb `preflight`: will the server start on this machine?
#include "printing/json.hpp"
#include "printing/preflight_json.hpp"
#include "printing/preflight_text.hpp"
#include "verbs/given_ids.hpp"
#include "verbs/input.hpp"
#include "verbs/preflight_report.hpp"
#include "verbs/refusal.hpp"

#include <ostream>
#include <utility>

namespace orvane {
namespace {

ExitCode exit_code(const preflight::Report& report, const Verdict& verdict, bool strict) {
    if (!report.clear()) return ExitCode::not_ready;
    const bool warned = report.count(preflight::Severity::warning) != 0 || !verdict.warnings.empty();
    return strict && warned ? ExitCode::warned : ExitCode::done;
}

} // namespace

ExitCode verb::preflight(const Call& call) {
    const WarningIds ignored = ignored_warnings(call, findings_to_ignore());
    Verdict verdict = judge(input_of(call), true, ignored);
    const bool json = call.wants_json(), quiet = call.has(own("quiet"));
    const auto tell = [&] { print_verdict(verdict, call.err, wanted_ids(call)); };
    if (!verdict.accepted()) {
        if (json)
            call.out << check_json(verdict) << '\n';
        else
            tell();
        return ExitCode::negative;
    }
    preflight::Report report = preflight_report(call, verdict, ignored);
    verdict.warnings = not_repeated(std::move(verdict.warnings), report);
    if (!json) tell();
    const ExitCode code = exit_code(report, verdict, call.has(own("strict")));
    const std::size_t warnings = report.count(preflight::Severity::warning) + verdict.warnings.size();
    const bool silent = quiet && !keep_problems(report);
    if (json && !(silent && verdict.clean()))
        call.out << preflight_json(verdict, report) << '\n';
    else if (!json && !silent)
        call.out << (quiet ? "" : acceptance(code, warnings)) << to_text(report);
    return code;
}

} // namespace orvane
