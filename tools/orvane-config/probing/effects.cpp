// What each occurrence of an accepted line does.
#include "probing/effects.hpp"

#include "probing/origins.hpp"
#include "probing/redundancy.hpp"
#include "reference/reference.hpp"

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

using Occurrences = std::vector<const Occurrence*>;

/// A long line without the many occurrences of one flag. What holds for those that stay holds for the others.
struct Condensed {
    CommandLine few{};
    std::vector<Redundant> redundant{};
    std::map<std::u16string, CommandLine> alike{}; ///< by flag, with the same effect as those that stay
};

/// Asks about occurrences of one flag, in a line in which they can have an effect.
Answer ask_alone(const CommandLine& occurrences) {
    CommandLine line = {occurrence_of(std::u16string(flag_with(Trait::starts_https).wide), u"1"),
                        occurrence_of(std::u16string(flag_with(Trait::required).wide), u"D")};
    line.insert(line.end(), occurrences.begin(), occurrences.end());
    return ask(line);
}

/// What the occurrence adds; for an entry with a key, the key.
std::string key_of(const Occurrence& occurrence, const std::vector<Setting>& nothing) {
    const auto settings = settings_of(ask_alone({occurrence}).settings);
    const auto changed = std::mismatch(settings.begin(), settings.end(), nothing.begin()).first;
    return changed == settings.end() || changed->lines.empty() ? std::string() : changed->lines[0].second;
}

/// Of a flag that adds, those that no later one with the same key replaces. Every element of a list counts.
Occurrences not_replaced(const Occurrences& all, std::vector<Redundant>& redundant) {
    if (ask_alone({*all[0], *all[0]}).settings != ask_alone({*all[0]}).settings) return all;
    const auto nothing = settings_of(ask_alone({}).settings);
    std::map<std::string, const Occurrence*> last;
    Occurrences kept;
    for (std::size_t i = all.size(); i-- != 0;) {
        const Occurrence*& later = last[key_of(*all[i], nothing)];
        if (later != nullptr && ask_alone({*all[i], *later}).settings == ask_alone({*later}).settings) {
            redundant.push_back({.occurrence = *all[i], .replaced_by = *later});
            continue;
        }
        if (later == nullptr) later = all[i];
        kept.push_back(all[i]);
    }
    std::reverse(kept.begin(), kept.end());
    return kept;
}

Condensed condensed(const CommandLine& line) {
    constexpr std::size_t few = 2;
    Condensed result;
    std::map<std::u16string_view, Occurrences> by_flag;
    for (const Occurrence& occurrence : line)
        by_flag[occurrence[0].text].push_back(&occurrence);
    std::set<std::size_t> staying;
    for (auto& [flag, all] : by_flag) {
        if (all.size() > few && reference_of(flag)->repeats != Repeats::adds) {
            for (std::size_t i = 0; i != all.size() - few; ++i)
                result.redundant.push_back({.occurrence = *all[i], .replaced_by = *all.back()});
            all.erase(all.begin(), all.end() - few);
        } else if (all.size() > few) {
            all = not_replaced(all, result.redundant);
            for (std::size_t i = few; i < all.size(); ++i)
                result.alike[std::u16string(flag)].push_back(*all[i]);
            all.resize(std::min(few, all.size()));
        }
        for (const Occurrence* one : all)
            staying.insert((*one)[0].number);
    }
    for (const Occurrence& occurrence : line)
        if (staying.contains(occurrence[0].number)) result.few.push_back(occurrence);
    return result;
}

Effects exact_effects(const CommandLine& line, const Answer& accepted, bool with_origins) {
    Effects effects = find_redundant(line, accepted);
    if (with_origins) find_origins(effects, accepted);
    return effects;
}

/// Applies to those that are alike what was found out about the ones that stayed.
void add_alike(Effects& effects, const std::u16string& flag, const CommandLine& alike) {
    const auto is_same_flag = [&flag](const Occurrence& one) { return one[0].text == flag; };
    const auto redundant = std::find_if(effects.redundant.begin(), effects.redundant.end(),
                                        [&](const Redundant& one) { return is_same_flag(one.occurrence); });
    if (redundant != effects.redundant.end()) {
        const Redundant pattern = *redundant;
        for (const Occurrence& occurrence : alike)
            effects.redundant.push_back({occurrence, pattern.replaced_by, pattern.needs_https});
        return;
    }
    for (auto& [name, origins] : effects.origins) {
        if (std::none_of(origins.begin(), origins.end(), is_same_flag)) continue;
        origins.insert(origins.end(), alike.begin(), alike.end());
        std::ranges::sort(origins, {}, [](const Occurrence& one) { return one[0].number; });
    }
}

} // namespace

Effects effects_of(const CommandLine& line, const Answer& accepted, bool with_origins) {
    constexpr std::size_t long_line = 150;
    if (line.size() <= long_line) return exact_effects(line, accepted, with_origins);
    std::vector<Redundant> before_the_last;
    const Condensed shorter = condensed(loosened(line, before_the_last));
    Effects effects = exact_effects(shorter.few, ask(shorter.few), with_origins);
    for (const auto& [flag, alike] : shorter.alike)
        add_alike(effects, flag, alike);
    for (const std::vector<Redundant>* more : {&std::as_const(before_the_last), &shorter.redundant})
        effects.redundant.insert(effects.redundant.end(), more->begin(), more->end());
    std::ranges::sort(effects.redundant, {}, &Redundant::number);
    return effects;
}

} // namespace orvane
