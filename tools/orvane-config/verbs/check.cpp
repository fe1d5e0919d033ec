// The verb `check`: what the library makes of a command line.
#include "printing/json.hpp"
#include "printing/security_text.hpp"
#include "printing/settings_text.hpp"
#include "printing/verdict_text.hpp"
#include "text/lists.hpp"
#include "text/spelling.hpp"
#include "verbs/configurations.hpp"
#include "verbs/expectation.hpp"
#include "verbs/given_ids.hpp"
#include "verbs/input.hpp"
#include "verbs/listed.hpp"
#include "verbs/refusal.hpp"

#include "qel/i18n/convert.hpp"

#include <functional>
#include <initializer_list>
#include <ostream>
#include <string>
#include <vector>

namespace orvane {
namespace {

/// The setting whose lines --get prints.
Setting wanted_setting(const std::string& name, const std::vector<Setting>& settings) {
    std::vector<std::string> names, containing;
    for (const Setting& setting : settings) {
        if (setting.name == name) return setting;
        // An element of a list, or a part of one.
        for (const auto& line : setting.lines)
            if (line.first == name) return {name, {line}};
        names.push_back(setting.name);
        if (name.size() > 2 && setting.name.find(name) != name.npos) containing.push_back(setting.name);
    }
    constexpr std::size_t few = 5; // as can be read at a glance
    const auto similar = containing.empty() || containing.size() > few
                             ? most_like(qel::i18n::utf8_to_ustring(name), names)
                             : containing;
    throw Misused("there is no setting '" + name + "'" +
                  (similar.empty()
                       ? "; 'orvane-config check --all FLAGS...' lists them"
                       : "; did you mean '" + joined(similar, "', '", std::identity(), "' or '") + "'?"));
}

/// The value as it is: it is for a script.
ExitCode print_setting(const Setting& setting, std::ostream& out) {
    for (const auto& [name, value] : setting.lines)
        out << value << '\n';
    return setting.lines.empty() ? ExitCode::absent : ExitCode::done;
}

void print_settings(const Call& call, const std::vector<Setting>& settings, const Verdict& verdict) {
    for (const Setting& setting : settings) {
        // Without the flags that it comes from it would be another.
        if (call.has(own("changed")) && verdict.effects.origins_of(setting).empty()) continue;
        if (call.has(own("all"))) {
            print_with_origin("", setting, verdict, call.out);
            continue;
        }
        for (const auto& line : setting.lines) {
            print(line, call.out);
            call.out << '\n';
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

/// Throws if two of them were given: they ask for different answers.
void refuse_together(const Call& call, std::initializer_list<const OwnOption*> options) {
    const OwnOption* first = nullptr;
    for (const OwnOption* const option : options) {
        if (!call.has(*option)) continue;
        if (first != nullptr)
            throw MisusedInPublic(spelled(*first) + " and " + spelled(*option) + " exclude each other");
        first = option;
    }
}

/// The verb's options exclude each other where they ask for different answers.
void refuse_contradictions(const Call& call) {
    const OwnOption *const get = &own("get"), *const changed = &own("changed"),
                           *const expect = &own("expect"), *const security = &own("security");
    refuse_together(call, {&own("all"), get, changed, expect, security});
    refuse_together(call, {&own("redact"), expect});
    const std::string format = call.value(own("format"), "text");
    if (format == "text") return;
    for (const OwnOption* const option : {get, changed, expect})
        refuse_together(call, {option, &own("format")});
    if (call.wants_list()) refuse_together(call, {security, &own("format")});
}

/// What goes to standard output about an accepted line.
ExitCode print_answer(const Call& call, const Verdict& verdict, const std::vector<HazardLook>& looks) {
    const auto settings = settings_of(verdict.answer.settings);
    if (call.has(own("get")))
        return print_setting(wanted_setting(call.value(own("get")), settings), call.out);
    const ExitCode code = verdict_code(call, verdict);
    if (call.has(own("expect"))) {
        if (is_as_expected(call, settings)) return code;
        call.brief = "not as expected";
        return ExitCode::negative;
    }
    const bool secure = call.has(own("security"));
    if (call.has(own("quiet")) && !secure) return code;
    call.out << acceptance(code, verdict.warnings.size());
    if (secure)
        call.out << to_text(looks, verdict.places)
                 << (call.has(own("strict")) && has_weak(looks) ? "--strict does not fail on what is weak\n"
                                                                : "");
    else
        print_settings(call, settings, verdict);
    return code;
}

} // namespace

ExitCode verb::check(const Call& call) {
    if (!is_one_configuration(call)) return check_each(call, check);
    refuse_contradictions(call);
    const bool all = call.has(own("all")), secure = call.has(own("security"));
    const WarningIds ignored = ignored_warnings(call);
    const Verdict verdict = judge(input_of(call), all || call.has(own("changed")), ignored);
    const auto looks = secure ? security_of(verdict, ignored) : std::vector<HazardLook>();
    call.brief = brief(verdict);
    const ExitCode code = verdict_code(call, verdict);
    if (call.wants_json()) {
        if (!call.has(own("quiet")) || !verdict.clean()) call.out << check_json(verdict, all, looks) << '\n';
        return code;
    }
    if (call.wants_list()) {
        list(call, {case_of(name_of(call, verdict), verdict)});
        return code;
    }
    if (!call.has(own("get")) || !verdict.accepted())
        print_verdict(secure ? without_hazards(verdict) : verdict, call.err, wanted_ids(call));
    return verdict.accepted() ? print_answer(call, verdict, looks) : code;
}

} // namespace orvane
