// The verb `show`: the settings that a line makes, and where each comes from.
#include "printing/json.hpp"
#include "printing/settings_text.hpp"
#include "printing/verdict_text.hpp"
#include "text/spelling.hpp"
#include "verbs/given_ids.hpp"
#include "verbs/input.hpp"

#include "qel/i18n/convert.hpp"

#include <ostream>

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
                  (similar.empty() ? "; 'orvane-config show FLAGS...' lists them"
                                   : "; did you mean '" + similar[0] + "'?"));
}

/// The value as it is: it is for a script.
ExitCode print_setting(const Setting& setting, std::ostream& out) {
    for (const auto& [name, value] : setting.lines)
        out << value << '\n';
    return setting.lines.empty() ? ExitCode::absent : ExitCode::done;
}

} // namespace

ExitCode verb::show(const Call& call) {
    const Verdict verdict = judge(input_of(call), true, ignored_warnings(call));
    const bool json = call.has(own("json")), one = call.has(own("get"));
    if (json && one) throw MisusedInPublic("--get and --json exclude each other");
    if (!verdict.accepted() || (!json && !one)) print_verdict(verdict, call.err, wanted_ids(call));
    if (!verdict.accepted()) return ExitCode::negative;
    if (one) return print_setting(wanted_setting(call.value(own("get")), verdict.answer.settings), call.out);
    if (json) {
        call.out << show_json(verdict) << '\n';
        return ExitCode::done;
    }
    for (const Setting& setting : settings_of(verdict.answer.settings))
        print_with_origin("", setting, verdict, call.out);
    return ExitCode::done;
}

} // namespace orvane
