// The verb `check`: what the library makes of a command line.
#include "printing/json.hpp"
#include "printing/settings_text.hpp"
#include "printing/verdict_text.hpp"
#include "verbs/given_ids.hpp"
#include "verbs/input.hpp"

#include <ostream>

namespace orvane {
namespace {

ExitCode exit_code(const Verdict& verdict, bool strict) {
    if (!verdict.accepted()) return ExitCode::negative;
    return strict && !verdict.warnings.empty() ? ExitCode::warned : ExitCode::done;
}

} // namespace

ExitCode verb::check(const Call& call) {
    const Verdict verdict = judge(input_of(call), false, ignored_warnings(call));
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
