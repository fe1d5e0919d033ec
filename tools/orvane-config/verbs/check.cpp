// The verbs `check` and `show`: what the library makes of a command line.
#include "explaining/verdict.hpp"
#include "printing/json.hpp"
#include "printing/quoting.hpp"
#include "verbs/input.hpp"

#include <algorithm>
#include <ostream>

namespace orvane {
namespace {

ExitCode exit_code(const Verdict& verdict, bool strict) {
    if (!verdict.accepted()) return ExitCode::refused;
    return strict && !verdict.warnings.empty() ? ExitCode::warned : ExitCode::done;
}

/// The words behind a setting: where it comes from.
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

ExitCode check(const Tokens& args, std::ostream& out, std::ostream& err) {
    CLI::App app(
        "Parses and validates the server's flags, and prints what they set, or what is wrong with them.\n"
        "orvane-config check [OPTIONS] FLAGS...",
        "orvane-config check");
    bool strict = false, json = false;
    app.add_flag("--strict", strict, "let warnings count: the exit code is 3 when there are any");
    app.add_flag("--json", json, "answer in JSON");
    ExitCode code{};
    const auto flags = take_flags(app, args, out, err, code);
    if (!flags) return code;

    const Verdict verdict = judge(*flags, false);
    if (json) {
        out << check_json(verdict) << '\n';
        return exit_code(verdict, strict);
    }
    explain(verdict, err);
    if (verdict.accepted()) {
        out << "configuration accepted\n";
        for (const Setting& setting : settings_of(verdict.answer.settings))
            for (const auto& line : setting.lines) {
                print(line, out);
                out << '\n';
            }
    }
    return exit_code(verdict, strict);
}

ExitCode show(const Tokens& args, std::ostream& out, std::ostream& err) {
    CLI::App app("Prints every setting that the server would run with, and where it comes from.\n"
                 "orvane-config show [OPTIONS] FLAGS...",
                 "orvane-config show");
    bool json = false;
    app.add_flag("--json", json, "answer in JSON");
    ExitCode code{};
    const auto flags = take_flags(app, args, out, err, code);
    if (!flags) return code;

    const Verdict verdict = judge(*flags, true);
    if (!verdict.accepted() || !json) explain(verdict, err);
    if (!verdict.accepted()) return ExitCode::refused;
    if (json) {
        out << show_json(verdict) << '\n';
        return ExitCode::done;
    }
    for (const Setting& setting : settings_of(verdict.answer.settings))
        show_setting(setting, verdict.effects, out);
    return ExitCode::done;
}

} // namespace orvane
