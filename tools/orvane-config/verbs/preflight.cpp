// The verb `preflight`: will the server start on this machine?
#include "printing/json.hpp"
#include "printing/preflight_json.hpp"
#include "printing/preflight_text.hpp"
#include "verbs/given_ids.hpp"
#include "verbs/input.hpp"
#include "verbs/preflight_report.hpp"

#include <ostream>

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
    const Verdict verdict = judge(input_of(call), true, ignored);
    const bool json = call.has(own("json"));
    if (!json) print_verdict(verdict, call.err, wanted_ids(call));
    if (!verdict.accepted()) {
        if (json) call.out << check_json(verdict) << '\n';
        return ExitCode::negative;
    }
    const preflight::Report report = preflight_report(call, verdict, ignored);
    if (json)
        call.out << preflight_json(verdict, report) << '\n';
    else
        call.out << "configuration accepted\n" << to_text(report);
    return exit_code(report, verdict, call.has(own("strict")));
}

} // namespace orvane
