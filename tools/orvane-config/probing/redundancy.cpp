// Which occurrences of an accepted line have no effect, and why.
#include "probing/redundancy.hpp"

#include "reference/reference.hpp"

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

CommandLine with(CommandLine line, std::size_t position, Occurrence occurrence) {
    line.insert(line.begin() + static_cast<std::ptrdiff_t>(position), std::move(occurrence));
    return line;
}

bool limits_what_follows(const Occurrence& occurrence) {
    return has(occurrence, Trait::limits_next);
}

/// Why `occurrence`, which belongs at `position` of the line, has no effect there. Nothing if it has one, or only repeats
/// the default.
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
    // Most are replaced by the same flag, others by one that follows soon.
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
        // Another flag cancels this one by starting a new listener. Otherwise this one only says what holds after that anyway.
        const bool starts_again = has(line[other], Trait::replaces_listener);
        if (line[other][0].text != occurrence[0].text && !starts_again) return std::nullopt;
        return Redundant{.occurrence = occurrence, .replaced_by = line[other]};
    }
    // Followed by nothing but the required flag.
    CommandLine alone = first(line, position);
    for (const Occurrence& required : line)
        if (has(required, Trait::required)) alone.push_back(required);
    if (!counts(alone, position)) return std::nullopt;
    return Redundant{.occurrence = occurrence};
}

struct Omitted {
    std::size_t position; ///< in the line without it
    Occurrence occurrence;
};

/// Leaves out of the line, one after the other, what does not change the record.
std::vector<Omitted> omit_from(CommandLine& line, const qel::config::ServerSettings& settings) {
    std::vector<Omitted> omitted;
    for (std::size_t i = 0; i != line.size();) {
        const CommandLine shorter = without(line, i);
        const Answer answer = ask(shorter);
        if (answer.code || answer.settings != settings) {
            ++i;
            continue;
        }
        omitted.push_back({i, line[i]});
        line = shorter;
    }
    return omitted;
}

} // namespace

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

Effects find_redundant(const CommandLine& line, const Answer& accepted) {
    constexpr std::size_t most_explained = 50; // each costs some parses of the line
    Effects effects;
    effects.effective = loosened(line, effects.redundant);
    const auto omitted = omit_from(effects.effective, accepted.settings);
    // From the end, because what says the default goes back into the line: it decides its setting, and replaces others.
    for (std::size_t left = omitted.size(); left-- != 0;) {
        const auto& [position, occurrence] = omitted[left];
        std::optional<Redundant> redundant = Redundant{.occurrence = occurrence};
        if (omitted.size() - left <= most_explained)
            redundant =
                explained(effects.effective, position, occurrence, accepted.settings.https().has_value());
        if (redundant)
            effects.redundant.push_back(std::move(*redundant));
        else
            effects.effective = with(std::move(effects.effective), position, occurrence);
    }
    std::ranges::sort(effects.redundant, {}, &Redundant::number);
    return effects;
}

} // namespace orvane
