// The verb `exec`: the server with checked flags.
#include "formats/format_table.hpp"
#include "printing/preflight_json.hpp"
#include "printing/preflight_text.hpp"
#include "printing/verdict_text.hpp"
#include "reference/reference.hpp"
#include "text/lists.hpp"
#include "verbs/given_ids.hpp"
#include "verbs/input.hpp"
#include "verbs/preflight_report.hpp"
#include "verbs/refusal.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace orvane {
namespace {

/// The groups that the user has left out, and the flags that no run of this build can look at.
std::vector<std::string> not_looked_at(const preflight::Report& report) {
    std::vector<std::string> names;
    for (const preflight::GroupReport& group : report.groups) {
        if (!group.looked_at) names.emplace_back(group.group->name);
        for (const preflight::Finding& finding : group.findings)
            if (finding.kind == preflight::Kind::not_looked_at)
                names.push_back(qel::i18n::ustring_to_utf8(std::u16string(finding.flag)));
    }
    return names;
}

ExitCode refuse_to_start(const Call& call, Verdict& verdict, preflight::Report& report) {
    verdict.warnings = not_repeated(std::move(verdict.warnings), report);
    if (call.wants_json()) {
        call.out << preflight_json(verdict, report) << '\n';
        return ExitCode::not_ready;
    }
    print_warnings(verdict, call.err);
    keep_problems(report); // in a log, what is ok would hide them
    call.err << to_text(report);
    return ExitCode::not_ready;
}

} // namespace

ExitCode verb::exec(const Call& call) {
    for (const OwnOption* const choice : {&own("only"), &own("skip")})
        if (call.has(*choice) && !call.has(own("preflight")))
            throw MisusedInPublic(spelled(*choice) + " needs " + spelled(own("preflight")));
    const Input input = input_of(call);
    const WarningIds ignored = ignored_warnings(call, findings_to_ignore());
    Verdict verdict = judge(input, true, ignored);
    if (const auto end = refusal(call, verdict)) return *end;
    if (!input.command) throw Misused("no command: put it after FLAGS and '--'");
    std::vector<std::string> unknown;
    if (call.has(own("preflight"))) {
        preflight::Report report = preflight_report(call, verdict, ignored);
        if (!report.may_start()) return refuse_to_start(call, verdict, report);
        unknown = not_looked_at(report);
    }
    print_warnings(verdict, call.err);
    const auto unchecked = std::ranges::find_if(
        *input.command, [](const std::u16string& word) { return reference_of(word) != nullptr; });
    if (unchecked != input.command->end())
        call.err << "orvane-config: warning: " << qel::i18n::ustring_to_utf8(*unchecked)
                 << " after '--' is passed to the command unchecked: the server's flags go before it\n";
    if (!unknown.empty())
        call.err << "orvane-config: not looked at before the start: " << joined(unknown) << '\n';
    call.successor = *input.command;
    call.successor.insert(call.successor.end(), input.flags.begin(), input.flags.end());
    if (call.has(own("dry-run")))
        call.out << write(format_named("sh"), u"", {std::exchange(call.successor, {})});
    return ExitCode::done;
}

} // namespace orvane
