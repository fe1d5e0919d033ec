// What is accepted, but probably not intended.
#include "explaining/warnings.hpp"

#include "explaining/hazards.hpp"
#include "explaining/replacement.hpp"
#include "explaining/same_meaning.hpp"
#include "explaining/warning_rules.hpp"
#include "probing/occurrence_text.hpp"
#include "text/quoting.hpp"

#include <algorithm>
#include <iterator>

namespace orvane {
namespace {

constexpr ExplainedKind kinds[] = {
#define ZEP_VALUE_WARNING(rule, ...) {__VA_ARGS__},
#define ZEP_LINE_WARNING(rule, ...) {__VA_ARGS__},
#include "explaining/warnings.def"
};

struct NamedValueRule {
    ValueRule* find;
    std::string_view id;
};

constexpr NamedValueRule value_rules[] = {
#define ZEP_VALUE_WARNING(rule, id, ...) {rule, id},
#define ZEP_LINE_WARNING(...)
#include "explaining/warnings.def"
};

struct NamedLineRule {
    LineRule* find;
    std::string_view id;
};

constexpr NamedLineRule line_rules[] = {
#define ZEP_VALUE_WARNING(...)
#define ZEP_LINE_WARNING(rule, id, ...) {rule, id},
#include "explaining/warnings.def"
};

/// What the rule knows of the intended value, if the server takes that and the rule has nothing more to say.
std::u16string certain(const GivenValue& value, ValueRule* find, const std::u16string& meant) {
    const Occurrence fixed{value.occurrence[0], {meant, value.occurrence[1].number}};
    if (meant.empty() || !takes(fixed) || !means_the_same(value.occurrence, fixed)) return {};
    const Suspicion again = find({fixed, value.reference, fixed[1].text});
    return again.text.empty() || !again.meant.empty() ? meant : u"";
}

} // namespace

const Occurrence* AcceptedLine::last(std::u16string_view flag) const {
    const auto found = std::find_if(line.rbegin(), line.rend(),
                                    [flag](const Occurrence& one) { return one[0].text == flag; });
    return found == line.rend() ? nullptr : &*found;
}

void WarningCollector::about_flag(const Occurrence& occurrence, const std::string& text) {
    warnings_.push_back({occurrence.front().number, id_, shown(occurrence) + text});
}

void WarningCollector::about_value(const Occurrence* occurrence, const std::string& text) {
    if (occurrence != nullptr)
        warnings_.push_back({occurrence->back().number, id_, shown(*occurrence) + text});
}

void WarningCollector::about_secret(const Occurrence& occurrence, const std::string& text) {
    warnings_.push_back({occurrence.back().number, id_, shown(occurrence[0].text) + text});
}

void WarningCollector::about_the_line(std::string text) {
    warnings_.push_back({0, id_, std::move(text)});
}

std::vector<Warning> warnings_of(const CommandLine& line, const Answer& answer, const Effects& effects,
                                 const WarningIds& ignored) {
    std::vector<Warning> warnings;
    for (const Occurrence& occurrence : line) {
        if (occurrence.size() != 2) continue;
        const GivenValue value{occurrence, *reference_of(occurrence[0].text), occurrence[1].text};
        for (const auto& [find, id] : value_rules) {
            const Suspicion found = find(value);
            if (found.text.empty() || ignored.contains(id)) continue;
            warnings.push_back({occurrence[1].number, id, shown(occurrence) + ": " + found.text,
                                certain(value, find, found.meant)});
            break;
        }
    }
    for (const auto& [find, id] : line_rules) {
        if (ignored.contains(id)) continue;
        WarningCollector collector(id, warnings);
        find({line, answer.settings, effects}, collector);
    }
    std::ranges::move(open_hazards(line, answer, effects, ignored), std::back_inserter(warnings));
    std::stable_sort(warnings.begin(), warnings.end(),
                     [](const Warning& a, const Warning& b) { return a.token < b.token; });
    return warnings;
}

std::span<const ExplainedKind> warning_kinds() {
    return kinds;
}

} // namespace orvane
