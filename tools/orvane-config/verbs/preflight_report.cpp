// What preflight finds, for the verbs that ask for it.
#include "verbs/preflight_report.hpp"

#include "text/lists.hpp"

#include <algorithm>
#include <set>

namespace orvane {

using namespace preflight;

namespace {

/// The groups that an option names. Throws Misused when one of them is none.
std::set<std::string_view> groups_in(const Call& call, const OwnOption& option) {
    std::set<std::string_view> names;
    const std::string list = call.value(option);
    for (const std::string_view name : split(list, ",")) {
        const auto found = std::ranges::find(groups, name, &Group::name);
        if (found == std::end(groups))
            throw Misused("there is no group '" + std::string(name) + "'; the groups are " +
                          joined(groups, ", ", &Group::name));
        names.insert(found->name);
    }
    if (names.empty() && call.has(option)) throw Misused(spelled(option) + " names no group");
    return names;
}

} // namespace

WarningIds findings_to_ignore() {
    WarningIds ids;
    for (const KindOfFinding& kind : kinds_of_findings())
        if (kind.severity == Severity::warning) ids.emplace(kind.id);
    return ids;
}

Report preflight_report(const Call& call, const Verdict& verdict, const WarningIds& ignored) {
    const auto only = groups_in(call, own("only")), skipped = groups_in(call, own("skip"));
    Report report{std::make_shared<Context>(
        Context{verdict.line, verdict.effects, verdict.answer.settings, call.has(own("network"))})};
    for (const Group& group : groups) {
        const bool wanted = (only.empty() || only.contains(group.name)) && !skipped.contains(group.name);
        report.groups.push_back({&group, wanted});
        if (!wanted) continue;
        report.groups.back().findings = look_at(group, report.context);
        std::erase_if(report.groups.back().findings, [&](const Finding& one) {
            const KindOfFinding& kind = about(one.kind);
            return kind.severity == Severity::warning && ignored.contains(kind.id);
        });
    }
    return report;
}

} // namespace orvane
