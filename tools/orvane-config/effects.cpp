// What each step of an accepted line does.
#include "effects.hpp"

#include "qel/config/option.hpp"
#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

namespace option = qel::config::option;

Line first(const Line& line, std::size_t count) {
    return Line(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(count));
}

/// Asks about a line without one step after the other.
class Omitting {
public:
    explicit Omitting(const Line& line) : line_(line), tokens_(tokens_of(line)) {}

    /// About the line without the step that comes next.
    Answer ask_without() {
        const auto from = tokens_.begin() + static_cast<std::ptrdiff_t>(token_);
        const Tokens step(from, from + size());
        tokens_.erase(from, from + size());
        Answer answer = ask(tokens_);
        tokens_.insert(tokens_.begin() + static_cast<std::ptrdiff_t>(token_), step.begin(), step.end());
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

    const Line& line_;
    Tokens tokens_;
    std::size_t step_ = 0;
    std::size_t token_ = 0;
};

Line with(Line line, std::size_t position, Step step) {
    line.insert(line.begin() + static_cast<std::ptrdiff_t>(position), std::move(step));
    return line;
}

bool limits_what_follows(const Step& step) {
    return step[0].text == option::request_timeout();
}

Line without(const Line& line, std::size_t position) {
    Line rest = line;
    rest.erase(rest.begin() + static_cast<std::ptrdiff_t>(position));
    return rest;
}

/// A line that gives the same record, and of which any step can be left out: no step stands behind the one flag that
/// limits what may follow. What had to go moves to `redundant`.
Line loosened(const Line& line, std::vector<Redundant>& redundant) {
    const auto last = std::find_if(line.rbegin(), line.rend(), limits_what_follows);
    if (last == line.rend()) return line;
    Line loose;
    for (const Step& step : line) {
        if (!limits_what_follows(step))
            loose.push_back(step);
        else if (&step != &*last)
            redundant.push_back({.step = step, .replaced_by = *last});
    }
    loose.push_back(*last);
    return loose;
}

/// Why `step`, which belongs at `position` of the line, has no effect there. Nothing when it has, but says what holds
/// without it, too.
std::optional<Redundant> explained(const Line& line, std::size_t position, const Step& step, bool has_https) {
    const auto counts = [&step](const Line& without_it, std::size_t at) {
        const Answer before = ask(without_it), after = ask(with(without_it, at, step));
        return before.walked() && !after.code && before.settings != after.settings;
    };
    if (!has_https && counts(with(line, 0, step_of(option::https(), u"1")), position + 1))
        return Redundant{.step = step, .needs_https = true};
    // Most are replaced by the same flag; else by one that follows soon.
    constexpr std::size_t most_asked = 6;
    std::vector<std::size_t> others;
    for (std::size_t later = position; later != line.size(); ++later) {
        if (line[later][0].text == step[0].text)
            others.insert(others.begin(), later);
        else
            others.push_back(later);
    }
    if (others.size() > most_asked) others.resize(most_asked);
    for (const std::size_t other : others) {
        if (!counts(without(line, other), position)) continue;
        // Another flag takes effect away by beginning anew. Else this one only says what holds behind that anyway.
        const bool begins_anew = line[other][0].text == option::http();
        if (line[other][0].text != step[0].text && !begins_anew) return std::nullopt;
        return Redundant{.step = step, .replaced_by = line[other]};
    }
    // Without anything behind it but the required flag.
    Line alone = first(line, position);
    for (const Step& required : line)
        if (required[0].text == option::auto_deploy_root()) alone.push_back(required);
    if (!counts(alone, position)) return std::nullopt;
    return Redundant{.step = step};
}

/// The names of the settings that differ.
std::vector<std::string> differences(const std::vector<Setting>& settings,
                                     const std::vector<Setting>& changed) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i != settings.size(); ++i)
        if (settings[i] != changed[i]) names.push_back(settings[i].name);
    return names;
}

/// For each setting the steps whose values decide it.
void find_origins(Effects& effects, const Answer& accepted) {
    const Line& line = effects.effective;
    const std::vector<Setting> settings = settings_of(accepted.settings);
    Omitting omitting(line);
    for (std::size_t i = 0; i != line.size(); ++i) {
        const Answer left_out = omitting.ask_without();
        omitting.keep();
        std::vector<std::string> names;
        if (!left_out.code) names = differences(settings, settings_of(left_out.settings));
        // What cannot be left out, or takes a whole listener with it, is asked about by other values.
        if (names.size() != 1 && line[i].size() == 2) {
            std::set<std::string> changing;
            for (const char16_t* value : {u"1", u"2"}) {
                Line other = line;
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
        const std::vector<Step>& origins = found->second;
        const auto says_so = [&](const Step& step) {
            return qel::i18n::ustring_to_utf8(step.back().text) == after[i].lines[0].second;
        };
        if (after[i].lines.size() == 1 && std::any_of(origins.begin(), origins.end(), says_so)) continue;
        // Some values wait for the end of the line only to be put in place: then none is left without their steps.
        Line rest;
        for (const Step& step : effects.effective)
            if (std::none_of(origins.begin(), origins.end(),
                             [&](const Step& origin) { return origin[0].number == step[0].number; }))
                rest.push_back(step);
        const Answer answer = ask(rest);
        if (answer.code || !settings_of(answer.settings)[i].lines.empty())
            effects.completed.insert(after[i].name);
    }
}

} // namespace

Effects effects_of(const Line& line, const Answer& accepted, bool with_origins) {
    Effects effects;
    const Line loose = loosened(line, effects.redundant);
    Omitting omitting(loose);
    std::vector<std::size_t> omitted; // positions in the effective line, before which they stood
    std::vector<const Step*> steps;
    for (const Step& step : loose) {
        const Answer answer = omitting.ask_without();
        if (answer.code || answer.settings != accepted.settings) {
            effects.effective.push_back(step);
            omitting.keep();
        } else {
            omitted.push_back(effects.effective.size());
            steps.push_back(&step);
            omitting.omit();
        }
    }
    // From the end, because what says the default goes back into the line: it decides its setting, and replaces others.
    std::size_t explaining = 50; // each costs some parses of the line
    for (std::size_t i = steps.size(); i-- != 0;) {
        std::optional<Redundant> redundant = Redundant{.step = *steps[i]};
        if (explaining != 0) {
            --explaining;
            redundant =
                explained(effects.effective, omitted[i], *steps[i], accepted.settings.https().has_value());
        }
        if (redundant)
            effects.redundant.push_back(std::move(*redundant));
        else
            effects.effective = with(std::move(effects.effective), omitted[i], *steps[i]);
    }
    std::sort(effects.redundant.begin(), effects.redundant.end(),
              [](const Redundant& a, const Redundant& b) { return a.step[0].number < b.step[0].number; });
    if (with_origins) {
        find_origins(effects, accepted);
        find_completed(effects, accepted);
    }
    return effects;
}

} // namespace orvane
