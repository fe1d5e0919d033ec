// The verb `check`: what the library makes of a command line.
#include "printing/json.hpp"
#include "printing/security_text.hpp"
#include "printing/settings_text.hpp"
#include "printing/verdict_text.hpp"
#include "text/spelling.hpp"
#include "verbs/configurations.hpp"
#include "verbs/given_ids.hpp"
#include "verbs/input.hpp"
#include "verbs/refusal.hpp"

#include "qel/i18n/convert.hpp"

#include <ostream>
#include <vector>

namespace orvane {
namespace {

/// The setting whose lines --get prints.
Setting wanted_setting(const std::string& name, const qel::config::ServerSettings& settings) {
    std::vector<std::string> names;
    for (Setting& setting : settings_of(settings)) {
        if (setting.name == name) return setting;
        // An element of a list, or a part of one.
        for (auto& line : setting.lines)
            if (line.first == name) return {name, {line}};
        names.push_back(setting.name);
    }
    const auto similar = most_like(qel::i18n::utf8_to_ustring(name), names);
    throw Misused("there is no setting '" + name + "'" +
                  (similar.empty() ? "; 'orvane-config check --all FLAGS...' lists them"
                                   : "; did you mean '" + similar[0] + "'?"));
}

/// The value as it is: it is for a script.
ExitCode print_setting(const Setting& setting, std::ostream& out) {
    for (const auto& [name, value] : setting.lines)
        out << value << '\n';
    return setting.lines.empty() ? ExitCode::absent : ExitCode::done;
}

void print_settings(const Verdict& verdict, bool all, std::ostream& out) {
    for (const Setting& setting : settings_of(verdict.answer.settings)) {
        if (all) {
            print_with_origin("", setting, verdict, out);
            continue;
        }
        for (const auto& line : setting.lines) {
            print(line, out);
            out << '\n';
        }
    }
}

std::string brief(const Verdict& verdict) {
    const auto counted = [](std::size_t count, const std::string& noun) {
        return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
    };
    const std::size_t faults = verdict.diagnosis.faults.size() + verdict.diagnosis.problems.size();
    if (!verdict.accepted()) return counted(faults, "fault");
    return verdict.warnings.empty() ? "ok" : "ok, " + counted(verdict.warnings.size(), "warning");
}

std::vector<HazardLook> security_of(const Verdict& verdict, const WarningIds& ignored) {
    if (!verdict.accepted()) return {};
    return look_at_hazards(verdict.line, verdict.answer, verdict.effects, ignored);
}

/// The answer of --security has them, with reasons.
Verdict without_hazards(Verdict verdict) {
    std::erase_if(verdict.warnings, [](const Warning& one) { return hazard_of(one.id) != nullptr; });
    return verdict;
}

} // namespace

ExitCode verb::check(const Call& call) {
    if (!is_one_configuration(call)) return check_each(call, check);
    const bool all = call.has(own("all")), one = call.has(own("get")), quiet = call.has(own("quiet")),
               secure = call.has(own("security"));
    if (call.wants_json() && one) throw MisusedInPublic("--get and --format json exclude each other");
    const WarningIds ignored = ignored_warnings(call);
    const Verdict verdict = judge(input_of(call), all, ignored);
    const auto looks = secure ? security_of(verdict, ignored) : std::vector<HazardLook>();
    call.brief = brief(verdict);
    const ExitCode code = verdict_code(call, verdict);
    if (call.wants_json()) {
        if (!quiet || !verdict.clean()) call.out << check_json(verdict, all, looks) << '\n';
        return code;
    }
    if (!one || !verdict.accepted())
        print_verdict(secure ? without_hazards(verdict) : verdict, call.err, wanted_ids(call));
    if (!verdict.accepted()) return code;
    if (one) return print_setting(wanted_setting(call.value(own("get")), verdict.answer.settings), call.out);
    if (quiet && !secure) return code;
    call.out << acceptance(code, verdict.warnings.size());
    if (secure)
        call.out << to_text(looks, verdict.places);
    else
        print_settings(verdict, all, call.out);
    return code;
}

} // namespace orvane
