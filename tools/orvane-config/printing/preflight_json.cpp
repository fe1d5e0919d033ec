// What preflight found, for programs.
#include "printing/preflight_json.hpp"

#include "printing/json_parts.hpp"
#include "system/entry.hpp"

namespace orvane {
namespace {

namespace json = boost::json;
using preflight::Severity;

json::object finding_json(const preflight::Finding& finding, const preflight::GroupReport& group,
                          const preflight::Context& context) {
    const auto& kind = preflight::about(finding.kind);
    json::object object{{"id", kind.id}, {"severity", to_text(kind.severity)}, {"group", group.group->name}};
    if (const Occurrence* const occurrence = occurrence_of(finding, context)) {
        json::array tokens = numbers_of_tokens(*occurrence);
        add_places(object, context.places, tokens);
        object["tokens"] = std::move(tokens);
        object["flag"] = json_text(occurrence->front().text);
        if (occurrence->size() == 2 && !finding.hides_value)
            object["value"] = json_text(occurrence->back().text);
    }
    object["what"] = json_text(finding.what);
    object["advice"] = json_text(finding.advice);
    return object;
}

} // namespace

std::string preflight_json(const Verdict& verdict, const preflight::Report& report) {
    json::object object = head_of(verdict);
    object["ready"] = report.ready();
    object["user"] = json_text(user_name());
    json::object counts;
    for (const Severity severity : {Severity::blocking, Severity::warning, Severity::unknown, Severity::ok})
        counts[to_text(severity)] = report.count(severity);
    object["counts"] = std::move(counts);
    json::array groups, findings;
    for (const preflight::GroupReport& group : report.groups) {
        groups.push_back({{"name", group.group->name}, {"looked_at", group.looked_at}});
        for (const preflight::Finding& finding : group.findings)
            findings.push_back(finding_json(finding, group, *report.context));
    }
    object["groups"] = std::move(groups);
    object["findings"] = std::move(findings);
    return answer_of(object);
}

} // namespace orvane
