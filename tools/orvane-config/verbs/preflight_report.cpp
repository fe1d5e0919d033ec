// What preflight finds, for the verbs that ask for it.
#include "verbs/preflight_report.hpp"

#include "reference/flag_texts.hpp"
#include "runtime/runtime_state.hpp"
#include "text/lists.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <charconv>
#include <set>
#include <system_error>

namespace orvane {

namespace {

using Names = std::set<std::string_view>;

/// The groups that the values of an option name. Throws Misused when one of them is none.
Names groups_in(const Call& call, const OwnOption& option) {
    constexpr auto& groups = preflight::groups;
    Names names;
    for (const auto& [given, list] : call.options) {
        if (given != &option) continue;
        for (const std::string_view name : split(list, ",")) {
            const auto found = std::ranges::find(groups, name, &preflight::Group::name);
            if (found == std::end(groups))
                throw Misused("there is no group '" + std::string(name) + "'; the groups are " +
                              joined(groups, ", ", &preflight::Group::name));
            names.insert(found->name);
        }
    }
    if (names.empty() && call.has(option)) throw Misused(spelled(option) + " names no group");
    return names;
}

/// What the user wants looked at. Throws Misused when that is nothing.
Names wanted_groups(const Call& call) {
    const Names only = groups_in(call, own("only")), skipped = groups_in(call, own("skip"));
    Names wanted;
    for (const preflight::Group& group : preflight::groups)
        if ((only.empty() || only.contains(group.name)) && !skipped.contains(group.name))
            wanted.insert(group.name);
    if (wanted.empty()) throw Misused(spelled(own("skip")) + " leaves no group to check");
    return wanted;
}

unsigned days_in(const Call& call, unsigned without) {
    constexpr unsigned most = 36500;
    if (!call.has(own("expires"))) return without;
    const std::string text = call.value(own("expires"));
    unsigned days = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), days);
    if (error != std::errc() || end != text.data() + text.size() || days > most)
        throw Misused(spelled(own("expires")) + " takes a number of days up to " + std::to_string(most) +
                      ", not '" + text + "'");
    return days;
}

/// The process that has published the pid file of these settings; 0 when it does not run here. Throws Misused when nothing
/// says which server that would be.
unsigned running_server(const qel::config::ServerSettings& settings) {
    if (!settings.pid_root())
        throw Misused(spelled(own("restart")) + " needs " + qel::i18n::ustring_to_utf8(flag::pid_root) +
                      ": main.pid there says which server is to be restarted");
    const FileReport file = inspect_runtime_files(settings).front();
    return file.state == FileState::running && !file.elsewhere ? file.pid : 0;
}

/// The values of tokens that look like secrets are found by warnings.
std::set<std::u16string> files_with_secrets(const Verdict& verdict) {
    std::set<std::u16string> files;
    for (const Warning& warning : verdict.warnings)
        if (const SourcePlace* const place = place_of(verdict.places, warning.token);
            place != nullptr && warning.id.starts_with("secret-"))
            files.insert(qel::i18n::utf8_to_ustring(place->file));
    return files;
}

} // namespace

WarningIds findings_to_ignore() {
    WarningIds ids;
    for (const preflight::KindOfFinding& kind : preflight::kinds_of_findings())
        if (kind.severity == preflight::Severity::warning) ids.emplace(kind.id);
    return ids;
}

preflight::Report preflight_report(const Call& call, const Verdict& verdict, const WarningIds& ignored) {
    const Names wanted = wanted_groups(call);
    const auto& settings = verdict.answer.settings;
    auto context = std::make_shared<preflight::Context>(preflight::Context{
        verdict.line, verdict.effects, settings, verdict.places, call.has(own("network"))});
    context->security = call.has(own("security"));
    context->files_with_secrets = files_with_secrets(verdict);
    context->days = days_in(call, context->days);
    if (call.has(own("restart"))) context->ends_before = running_server(settings);
    preflight::Report report{context};
    for (const preflight::Group& group : preflight::groups) {
        report.groups.push_back({&group, wanted.contains(group.name)});
        if (!report.groups.back().looked_at) continue;
        report.groups.back().findings = look_at(group, report.context);
        std::erase_if(report.groups.back().findings, [&](const preflight::Finding& one) {
            const preflight::KindOfFinding& kind = about(one.kind);
            return kind.severity == preflight::Severity::warning && ignored.contains(kind.id);
        });
    }
    return report;
}

preflight::Report nothing_looked_at() {
    preflight::Report report;
    for (const preflight::Group& group : preflight::groups)
        report.groups.push_back({&group, false});
    return report;
}

bool keep_problems(preflight::Report& report) {
    bool any = false;
    for (preflight::GroupReport& group : report.groups) {
        std::erase_if(group.findings, [](const preflight::Finding& one) {
            return about(one.kind).severity == preflight::Severity::ok;
        });
        any = any || !group.findings.empty();
    }
    return any;
}

std::vector<Warning> not_repeated(std::vector<Warning> warnings, const preflight::Report& report) {
    std::erase_if(warnings, [&](const Warning& warning) {
        const auto repeats = [&](const preflight::Finding& finding) {
            if (about(finding.kind).id != warning.id) return false;
            const Occurrence* const given = occurrence_of(finding, *report.context);
            return given != nullptr &&
                   std::ranges::find(*given, warning.token, &Token::number) != given->end();
        };
        return std::ranges::any_of(report.groups, [&](const preflight::GroupReport& group) {
            return std::ranges::any_of(group.findings, repeats);
        });
    });
    return warnings;
}

} // namespace orvane
