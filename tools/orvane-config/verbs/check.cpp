// The verbs `check` and `show`: what the library makes of a command line.
#include "printing/json.hpp"
#include "printing/quoting.hpp"
#include "printing/verdict_text.hpp"
#include "verbs/ignored_warnings.hpp"
#include "verbs/input.hpp"

#include <algorithm>
#include <ostream>

namespace orvane {
namespace {

ExitCode exit_code(const Verdict& verdict, bool strict) {
    if (!verdict.accepted()) return ExitCode::refused;
    return strict && !verdict.warnings.empty() ? ExitCode::warned : ExitCode::done;
}

/// Where a setting comes from.
std::string origin_of(const Setting& setting, const Effects& effects) {
    std::string text;
    const auto occurrences = effects.origins.find(setting.name);
    if (occurrences != effects.origins.end())
        for (const Occurrence& occurrence : occurrences->second)
            text += (text.empty() ? "" : ", ") + numbers_of(occurrence);
    if (effects.completed.contains(setting.name))
        text += text.empty() ? "completed by the library" : ", completed by the library";
    return text;
}

void show_setting(const Setting& setting, const Effects& effects, std::ostream& out) {
    if (setting.lines.empty()) {
        out << setting.name << "  # not set\n";
        return;
    }
    for (const auto& line : setting.lines) {
        print(line, out);
        out << (&line == &setting.lines.back() ? "  # " + origin_of(setting, effects) : "") << '\n';
    }
}

} // namespace

ExitCode check(const Call& call) {
    const Verdict verdict = judge(input_of(call).flags, false, ignored_warnings(call));
    const bool strict = call.has(own("strict"));
    if (call.has(own("json"))) {
        call.out << check_json(verdict) << '\n';
        return exit_code(verdict, strict);
    }
    explain(verdict, call.err);
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

ExitCode show(const Call& call) {
    const Verdict verdict = judge(input_of(call).flags, true, ignored_warnings(call));
    const bool json = call.has(own("json"));
    if (!verdict.accepted() || !json) explain(verdict, call.err);
    if (!verdict.accepted()) return ExitCode::refused;
    if (json) {
        call.out << show_json(verdict) << '\n';
        return ExitCode::done;
    }
    for (const Setting& setting : settings_of(verdict.answer.settings))
        show_setting(setting, verdict.effects, call.out);
    return ExitCode::done;
}

} // namespace orvane
