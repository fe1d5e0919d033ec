// The verb `check`: what the library makes of a command line.
#include "printing/json.hpp"
#include "printing/settings_text.hpp"
#include "printing/verdict_text.hpp"
#include "verbs/configurations.hpp"
#include "verbs/given_ids.hpp"
#include "verbs/input.hpp"

#include <ostream>

namespace orvane {
namespace {

ExitCode exit_code(const Verdict& verdict, bool strict) {
    if (!verdict.accepted()) return ExitCode::negative;
    return strict && !verdict.warnings.empty() ? ExitCode::warned : ExitCode::done;
}

std::string brief(const Verdict& verdict) {
    const auto counted = [](std::size_t count, const std::string& noun) {
        return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
    };
    const std::size_t faults = verdict.diagnosis.faults.size() + verdict.diagnosis.problems.size();
    if (!verdict.accepted()) return counted(faults, "fault");
    return verdict.warnings.empty() ? "ok" : "ok, " + counted(verdict.warnings.size(), "warning");
}

} // namespace

ExitCode verb::check(const Call& call) {
    if (!is_one_configuration(call)) return check_each(call, check);
    const Verdict verdict = judge(input_of(call), false, ignored_warnings(call));
    call.brief = brief(verdict);
    const bool strict = call.has(own("strict"));
    if (call.has(own("quiet"))) return exit_code(verdict, strict);
    if (call.has(own("json"))) {
        call.out << check_json(verdict) << '\n';
        return exit_code(verdict, strict);
    }
    print_verdict(verdict, call.err, wanted_ids(call));
    if (verdict.accepted()) {
        call.out << "configuration accepted\n";
        for (const Setting& setting : settings_of(verdict.answer.settings))
            for (const auto& line : setting.lines) {
                print(line, call.out);
                call.out << '\n';
            }
    }
    return exit_code(verdict, strict);
}

} // namespace orvane
