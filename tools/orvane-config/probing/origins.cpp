// Which occurrences of an accepted line decide its settings.
#include "probing/origins.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

/// For each setting the occurrences whose values decide it.
void find_deciding(Effects& effects, const std::vector<Setting>& settings) {
    for (std::size_t i = 0; i != effects.effective.size(); ++i)
        for (const std::size_t position : decided_by(effects.effective, i, settings))
            effects.origins[settings[position].name].push_back(effects.effective[i]);
}

/// A token that is no flag ends the walk before the record is completed.
CommandLine without_an_end(CommandLine line) {
    line.push_back({{u"", 0}});
    return line;
}

/// Whether there is a value without the origins of the setting at this position.
bool is_set_without(const std::vector<Occurrence>& origins, const CommandLine& line, std::size_t position) {
    CommandLine rest = line;
    std::erase_if(rest, [&](const Occurrence& occurrence) {
        const auto is_this = [&](const Occurrence& origin) {
            return origin[0].number == occurrence[0].number;
        };
        return std::any_of(origins.begin(), origins.end(), is_this);
    });
    const Answer answer = ask(rest);
    return answer.code || !settings_of(answer.settings)[position].lines.empty();
}

/// The settings that the library adds or changes when it completes the record at the end of a line.
void find_completed(Effects& effects, const std::vector<Setting>& after) {
    const auto before = settings_of(ask(without_an_end(effects.effective)).settings);
    for (std::size_t i = 0; i != after.size(); ++i) {
        const std::string& name = after[i].name;
        const auto& lines = after[i].lines;
        if (lines.empty()) continue;
        if (const auto found = effects.origins.find(name); found != effects.origins.end()) {
            if (before[i] == after[i]) continue;
            const auto says_so = [&](const Occurrence& occurrence) {
                return qel::i18n::ustring_to_utf8(occurrence.back().text) == lines[0].second;
            };
            const auto& origins = found->second;
            if (lines.size() == 1 && std::any_of(origins.begin(), origins.end(), says_so)) continue;
            // Some values wait for the end of the line only to be put in place: then none is left without their occurrences.
            if (!is_set_without(origins, effects.effective, i)) continue;
        }
        effects.completed.insert(name);
    }
}

} // namespace

std::set<std::size_t> decided_by(const CommandLine& line, std::size_t at,
                                 const std::vector<Setting>& settings) {
    const auto changed_in = [&](const CommandLine& other) {
        const Answer answer = ask(other);
        return answer.code ? std::set<std::size_t>() : differing(settings, settings_of(answer.settings));
    };
    auto changed = changed_in(without(line, at));
    // What cannot be left out, or takes a whole listener with it, is asked about by other values.
    if (changed.size() == 1 || line[at].size() != 2) return changed;
    std::set<std::size_t> by_value;
    for (const char16_t* value : {u"1", u"2"}) {
        CommandLine other = line;
        other[at][1].text = value;
        by_value.merge(changed_in(other));
    }
    return by_value.empty() ? changed : by_value;
}

void find_origins(Effects& effects, const Answer& accepted) {
    const auto settings = settings_of(accepted.settings);
    find_deciding(effects, settings);
    find_completed(effects, settings);
}

} // namespace orvane
