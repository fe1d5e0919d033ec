// What preflight found, for people.
#include "printing/preflight_text.hpp"

#include "printing/wrapping.hpp"
#include "system/entry.hpp"
#include "text/escape.hpp"
#include "text/lists.hpp"

#include <algorithm>

namespace orvane::preflight {
namespace {

/// The findings about one setting.
struct Section {
    const Occurrence* occurrence; ///< null: about the group
    std::vector<const Finding*> findings{};
};

/// In the order of the first finding about each.
std::vector<Section> sections_of(const GroupReport& group, const Context& context) {
    std::vector<Section> sections;
    for (const Finding& finding : group.findings) {
        const Occurrence* const occurrence = occurrence_of(finding, context);
        auto section = std::ranges::find(sections, occurrence, &Section::occurrence);
        if (section == sections.end()) section = sections.insert(section, {occurrence});
        section->findings.push_back(&finding);
    }
    return sections;
}

/// What is fine on one line, the rest on a line for each.
std::string text_of(const Section& section, const Context& context) {
    std::string text, fine;
    const auto hides = [](const Finding* finding) { return finding->hides_value; };
    if (section.occurrence != nullptr)
        text = "  " + as_given(*section.occurrence, context, std::ranges::any_of(section.findings, hides)) +
               "\n";
    const std::string indent(text.empty() ? 2 : 4, ' ');
    for (const Finding* finding : section.findings) {
        const auto& [group, id, severity, meaning] = about(finding->kind);
        if (finding->kind == Kind::client_view) {
            if (text.empty()) text = indent + "what clients would get\n";
            text += wrapped(escape(finding->what), indent.size() + 2, 2) + "\n";
            continue;
        }
        if (severity == Severity::ok) {
            fine += (fine.empty() ? "" : "; ") + escape(finding->what);
            continue;
        }
        text.append(indent).append(to_text(severity)).append(": ").append(escape(finding->what));
        text.append(" [").append(id).append("]\n");
        if (!finding->advice.empty()) text.append(indent + "  ").append(escape(finding->advice)).append("\n");
    }
    if (fine.empty()) return text;
    return text + indent + "ok: " + fine + "\n";
}

std::string text_of(const GroupReport& group, const Context& context) {
    std::string text;
    for (const Section& section : sections_of(group, context))
        text += text_of(section, context);
    return text.empty() ? text : std::string(group.group->name) + "\n" + text;
}

std::string counted(std::size_t count, std::string_view one, std::string_view more) {
    return std::to_string(count) + " " + std::string(count == 1 ? one : more);
}

/// What the findings come to, and nothing that was not looked at.
std::string verdict_of(const Report& report) {
    if (report.ready())
        return "ready: as user " + user_name() + ", the server can start here with these flags";
    if (report.clear()) return "nothing found that keeps the server from starting";
    return report.count(Severity::blocking) == 0 ? "not known to be ready" : "not ready";
}

std::size_t caches_not_contacted(const Report& report) {
    std::size_t count = 0;
    for (const GroupReport& group : report.groups)
        count +=
            static_cast<std::size_t>(std::ranges::count(group.findings, Kind::cache_found, &Finding::kind));
    return count;
}

std::string summary_of(const Report& report) {
    const std::size_t blocking = report.count(Severity::blocking), warnings = report.count(Severity::warning),
                      unknown = report.count(Severity::unknown), caches = caches_not_contacted(report);
    std::string text = verdict_of(report);
    std::vector<std::string> counts;
    const auto add = [&](std::size_t count, std::string_view one, std::string_view more) {
        if (count != 0) counts.push_back(counted(count, one, more));
    };
    add(blocking, "blocking finding", "blocking findings");
    add(warnings, "warning", "warnings");
    add(unknown, "unknown", "unknown");
    if (!counts.empty()) text += (report.clear() ? "; " : ": ") + joined(counts);
    if (caches != 0) text += "; " + counted(caches, "cache", "caches") + " not contacted";
    std::vector<std::string_view> skipped;
    for (const GroupReport& group : report.groups)
        if (!group.looked_at) skipped.push_back(group.group->name);
    return skipped.empty() ? text : text + "; not looked at: " + joined(skipped);
}

} // namespace

std::string to_text(const Report& report) {
    std::string text;
    for (const GroupReport& group : report.groups)
        text += text_of(group, *report.context);
    if (report.clear() && has_every_right())
        text += "This is the answer for root, who has every right. If the server runs as another user, ask "
                "as that "
                "user: sudo -u USER orvane-config preflight ...\n";
    return text + summary_of(report) + "\n";
}

} // namespace orvane::preflight
