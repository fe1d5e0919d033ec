// The verb `preflight`: will the server start on this machine?
#include "printing/json.hpp"
#include "printing/preflight_json.hpp"
#include "printing/verdict_text.hpp"
#include "verbs/ignored_warnings.hpp"
#include "verbs/input.hpp"
#include "verbs/look_around.hpp"

#include <algorithm>
#include <ostream>
#include <set>

namespace orvane {
namespace {

using namespace readiness;

/// The groups that an option names. Throws Misused when one of them is none.
std::set<std::string_view> groups_in(const Call& call, const OwnOption& option) {
    std::set<std::string_view> names;
    const std::string list = call.value(option);
    for (const std::string_view name : split(list, ',')) {
        const auto found = std::ranges::find(groups, name, &Group::name);
        if (found == std::end(groups)) {
            std::string known;
            for (const Group& group : groups)
                known += (known.empty() ? "" : ", ") + std::string(group.name);
            throw Misused("there is no group '" + std::string(name) + "'; the groups are " + known);
        }
        names.insert(found->name);
    }
    if (names.empty() && call.has(option)) throw Misused(spelled(option) + " names no group");
    return names;
}

/// Whatever would not stop the server can be ignored.
WarningIds findings_to_ignore() {
    WarningIds ids;
    for (const KindOfFinding& kind : kinds_of_findings())
        if (kind.severity == Severity::warning) ids.emplace(kind.id);
    return ids;
}

} // namespace

Report look_around(const Call& call, const Verdict& verdict) {
    const WarningIds ignored = ignored_warnings(call, findings_to_ignore());
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

namespace {

ExitCode exit_code(const Report& report, const Verdict& verdict, bool strict) {
    if (!report.ready()) return ExitCode::not_ready;
    const bool warned = report.count(Severity::warning) != 0 || !verdict.warnings.empty();
    return strict && warned ? ExitCode::warned : ExitCode::done;
}

} // namespace

ExitCode preflight(const Call& call) {
    const Verdict verdict = judge(input_of(call), true, ignored_warnings(call, findings_to_ignore()));
    const bool json = call.has(own("json"));
    if (!json) explain(verdict, call.err, wanted_ids(call));
    if (!verdict.accepted()) {
        if (json) call.out << check_json(verdict) << '\n';
        return ExitCode::refused;
    }
    const Report report = look_around(call, verdict);
    if (json)
        call.out << preflight_json(verdict, report) << '\n';
    else
        call.out << "configuration accepted\n" << to_text(report);
    return exit_code(report, verdict, call.has(own("strict")));
}

} // namespace orvane
