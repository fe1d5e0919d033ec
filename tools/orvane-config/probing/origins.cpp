// Which occurrences of an accepted line decide its settings.
#include "probing/origins.hpp"

#include "probing/leave_one_out.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

/// The names of the settings that differ.
std::vector<std::string> differences(const std::vector<Setting>& settings,
                                     const std::vector<Setting>& changed) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i != settings.size(); ++i)
        if (settings[i] != changed[i]) names.push_back(settings[i].name);
    return names;
}

/// For each setting the occurrences whose values decide it.
void find_deciding(Effects& effects, const Answer& accepted) {
    const CommandLine& line = effects.effective;
    const std::vector<Setting> settings = settings_of(accepted.settings);
    LeaveOneOut omitting(line);
    for (std::size_t i = 0; i != line.size(); ++i) {
        const Answer left_out = omitting.ask_without();
        omitting.keep();
        std::vector<std::string> names;
        if (!left_out.code) names = differences(settings, settings_of(left_out.settings));
        // What cannot be left out, or takes a whole listener with it, is asked about by other values.
        if (names.size() != 1 && line[i].size() == 2) {
            std::set<std::string> changing;
            for (const char16_t* value : {u"1", u"2"}) {
                CommandLine other = line;
                other[i][1].text = value;
                const Answer answer = ask(other);
                if (answer.code) continue;
                for (const std::string& name : differences(settings, settings_of(answer.settings)))
                    changing.insert(name);
            }
            if (!changing.empty()) names.assign(changing.begin(), changing.end());
        }
        for (const std::string& name : names)
            effects.origins[name].push_back(line[i]);
    }
}

/// A token that is no flag ends the walk before the record is completed.
CommandLine without_an_end(CommandLine line) {
    line.push_back({{u"", 0}});
    return line;
}

/// The settings that the library adds or changes when it completes the record at the end of a line.
void find_completed(Effects& effects, const Answer& accepted) {
    const auto before = settings_of(ask(without_an_end(effects.effective)).settings);
    const auto after = settings_of(accepted.settings);
    for (std::size_t i = 0; i != after.size(); ++i) {
        if (after[i].lines.empty()) continue;
        const auto found = effects.origins.find(after[i].name);
        if (found == effects.origins.end()) {
            effects.completed.insert(after[i].name);
            continue;
        }
        if (before[i] == after[i]) continue;
        const std::vector<Occurrence>& origins = found->second;
        const auto says_so = [&](const Occurrence& occurrence) {
            return qel::i18n::ustring_to_utf8(occurrence.back().text) == after[i].lines[0].second;
        };
        if (after[i].lines.size() == 1 && std::any_of(origins.begin(), origins.end(), says_so)) continue;
        // Some values wait for the end of the line only to be put in place: then none is left without their occurrences.
        CommandLine rest;
        for (const Occurrence& occurrence : effects.effective)
            if (std::none_of(origins.begin(), origins.end(), [&](const Occurrence& origin) {
                    return origin[0].number == occurrence[0].number;
                }))
                rest.push_back(occurrence);
        const Answer answer = ask(rest);
        if (answer.code || !settings_of(answer.settings)[i].lines.empty())
            effects.completed.insert(after[i].name);
    }
}

} // namespace

void find_origins(Effects& effects, const Answer& accepted) {
    find_deciding(effects, accepted);
    find_completed(effects, accepted);
}

} // namespace orvane
