// What each occurrence of an accepted line does.
#include "probing/effects.hpp"

#include "reference/reference.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

bool has(const Occurrence& occurrence, Trait trait) {
    const Reference* const reference = reference_of(occurrence[0].text);
    return reference != nullptr && reference->trait == trait;
}

CommandLine first(const CommandLine& line, std::size_t count) {
    return CommandLine(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(count));
}

/// Asks about a line without one occurrence after the other.
class LeaveOneOut {
public:
    explicit LeaveOneOut(const CommandLine& line) : line_(line), tokens_(tokens_of(line)) {}

    /// About the line without the occurrence that comes next.
    Answer ask_without() {
        const auto from = tokens_.begin() + static_cast<std::ptrdiff_t>(token_);
        const Tokens occurrence(from, from + size());
        tokens_.erase(from, from + size());
        Answer answer = ask(tokens_);
        tokens_.insert(tokens_.begin() + static_cast<std::ptrdiff_t>(token_), occurrence.begin(),
                       occurrence.end());
        return answer;
    }

    void keep() { token_ += line_[step_++].size(); }
    void omit() {
        const auto from = tokens_.begin() + static_cast<std::ptrdiff_t>(token_);
        tokens_.erase(from, from + size());
        ++step_;
    }

private:
    std::ptrdiff_t size() const { return static_cast<std::ptrdiff_t>(line_[step_].size()); }

    const CommandLine& line_;
    Tokens tokens_;
    std::size_t step_ = 0;
    std::size_t token_ = 0;
};

CommandLine with(CommandLine line, std::size_t position, Occurrence occurrence) {
    line.insert(line.begin() + static_cast<std::ptrdiff_t>(position), std::move(occurrence));
    return line;
}

bool limits_what_follows(const Occurrence& occurrence) {
    return has(occurrence, Trait::limits_next);
}

CommandLine without(const CommandLine& line, std::size_t position) {
    CommandLine rest = line;
    rest.erase(rest.begin() + static_cast<std::ptrdiff_t>(position));
    return rest;
}

/// A line that gives the same record, and of which any occurrence can be left out: no occurrence stands behind the one flag that
/// limits what may follow. What had to go moves to `redundant`.
CommandLine loosened(const CommandLine& line, std::vector<Redundant>& redundant) {
    const auto last = std::find_if(line.rbegin(), line.rend(), limits_what_follows);
    if (last == line.rend()) return line;
    CommandLine loose;
    for (const Occurrence& occurrence : line) {
        if (!limits_what_follows(occurrence))
            loose.push_back(occurrence);
        else if (&occurrence != &*last)
            redundant.push_back({.occurrence = occurrence, .replaced_by = *last});
    }
    loose.push_back(*last);
    return loose;
}

/// Why `occurrence`, which belongs at `position` of the line, has no effect there. Nothing when it has, but says what holds
/// without it, too.
std::optional<Redundant> explained(const CommandLine& line, std::size_t position,
                                   const Occurrence& occurrence, bool has_https) {
    const auto counts = [&occurrence](const CommandLine& without_it, std::size_t at) {
        const Answer before = ask(without_it), after = ask(with(without_it, at, occurrence));
        return before.consumed() && !after.code && before.settings != after.settings;
    };
    if (!has_https && has(occurrence, Trait::needs_https) &&
        counts(with(line, 0, occurrence_of(std::u16string(flag_with(Trait::starts_https).wide), u"1")),
               position + 1))
        return Redundant{.occurrence = occurrence, .needs_https = true};
    // Most are replaced by the same flag; else by one that follows soon.
    constexpr std::size_t most_asked = 6;
    std::vector<std::size_t> others;
    for (std::size_t later = position; later != line.size(); ++later) {
        if (line[later][0].text == occurrence[0].text)
            others.insert(others.begin(), later);
        else
            others.push_back(later);
    }
    if (others.size() > most_asked) others.resize(most_asked);
    for (const std::size_t other : others) {
        if (!counts(without(line, other), position)) continue;
        // Another flag takes effect away by beginning anew. Else this one only says what holds behind that anyway.
        const bool begins_anew = has(line[other], Trait::replaces_listener);
        if (line[other][0].text != occurrence[0].text && !begins_anew) return std::nullopt;
        return Redundant{.occurrence = occurrence, .replaced_by = line[other]};
    }
    // Without anything behind it but the required flag.
    CommandLine alone = first(line, position);
    for (const Occurrence& required : line)
        if (has(required, Trait::required)) alone.push_back(required);
    if (!counts(alone, position)) return std::nullopt;
    return Redundant{.occurrence = occurrence};
}

/// The names of the settings that differ.
std::vector<std::string> differences(const std::vector<Setting>& settings,
                                     const std::vector<Setting>& changed) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i != settings.size(); ++i)
        if (settings[i] != changed[i]) names.push_back(settings[i].name);
    return names;
}

/// For each setting the occurrences whose values decide it.
void find_origins(Effects& effects, const Answer& accepted) {
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

/// The settings that are there, or are as they are, because the library completes the record at the end of a line.
void find_completed(Effects& effects, const Answer& accepted) {
    // A token that is no flag ends the walk before that.
    const auto before =
        settings_of(ask(with(effects.effective, effects.effective.size(), {{u"", 0}})).settings);
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

Effects effects_of(const CommandLine& line, const Answer& accepted, bool with_origins) {
    Effects effects;
    const CommandLine loose = loosened(line, effects.redundant);
    LeaveOneOut omitting(loose);
    std::vector<std::size_t> omitted; // positions in the effective line, before which they stood
    std::vector<const Occurrence*> occurrences;
    for (const Occurrence& occurrence : loose) {
        const Answer answer = omitting.ask_without();
        if (answer.code || answer.settings != accepted.settings) {
            effects.effective.push_back(occurrence);
            omitting.keep();
        } else {
            omitted.push_back(effects.effective.size());
            occurrences.push_back(&occurrence);
            omitting.omit();
        }
    }
    // From the end, because what says the default goes back into the line: it decides its setting, and replaces others.
    std::size_t explaining = 50; // each costs some parses of the line
    for (std::size_t i = occurrences.size(); i-- != 0;) {
        std::optional<Redundant> redundant = Redundant{.occurrence = *occurrences[i]};
        if (explaining != 0) {
            --explaining;
            redundant = explained(effects.effective, omitted[i], *occurrences[i],
                                  accepted.settings.https().has_value());
        }
        if (redundant)
            effects.redundant.push_back(std::move(*redundant));
        else
            effects.effective = with(std::move(effects.effective), omitted[i], *occurrences[i]);
    }
    std::sort(effects.redundant.begin(), effects.redundant.end(), [](const Redundant& a, const Redundant& b) {
        return a.occurrence[0].number < b.occurrence[0].number;
    });
    if (with_origins) {
        find_origins(effects, accepted);
        find_completed(effects, accepted);
    }
    return effects;
}

} // namespace orvane
