// What is wrong, a remark each, and how compilers write that.
#include "printing/remarks.hpp"

#include "explaining/kinds.hpp"
#include "text/escape.hpp"
#include "text/lists.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

std::string one_line(std::string text) {
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    return escape(text);
}

/// About a token, or about `whole`.
Remark remark(const SourcePlaces& places, std::size_t number, std::string_view whole, std::string_view level,
              std::string text, std::string_view id) {
    const SourcePlace* const place = place_of(places, number);
    return {place == nullptr ? SourcePlace() : *place,
            number == 0 ? std::string(whole) : "argument " + std::to_string(number), level,
            one_line(std::move(text)), id};
}

/// The first flag that a problem names.
std::size_t number_named_in(const std::u16string& problem, const CommandLine& line) {
    const auto is_named = [&](const Occurrence& occurrence) {
        return (problem + u" ").find(occurrence[0].text + u" ") != problem.npos;
    };
    const auto named = std::ranges::find_if(line, is_named);
    if (named != line.end()) return (*named)[0].number;
    return line.empty() ? 0 : line.front()[0].number;
}

std::string text_of(const Fault& fault, const Advice& advice) {
    std::string text = one_line(fault.text.empty() ? fault.code.message() : fault.text);
    for (const std::string& sentence : advice.sentences)
        text.append("; ").append(sentence);
    return text;
}

Remark remark(const preflight::Finding& finding, std::string_view group, const preflight::Context& context) {
    const auto& kind = about(finding.kind);
    const Occurrence* const given = occurrence_of(finding, context);
    // What could not be looked at keeps the server from being ready, too.
    return remark(context.places, given == nullptr ? 0 : given->front().number, group,
                  kind.severity == preflight::Severity::warning ? "warning" : "error",
                  finding.what + (finding.advice.empty() ? "" : ". ") + finding.advice, kind.id);
}

} // namespace

Case case_of(const std::string& name, const Verdict& verdict) {
    Case one{name};
    const Diagnosis& diagnosis = verdict.diagnosis;
    const auto add = [&](std::size_t number, const char* level, std::string text, std::string_view id) {
        one.remarks.push_back(remark(verdict.places, number, command_line, level, std::move(text), id));
        if (number == 0 && name != command_line) one.remarks.back().place.file = name;
    };
    for (std::size_t i = 0; i != diagnosis.faults.size(); ++i) {
        const Fault& fault = diagnosis.faults[i];
        add(fault.occurrence.empty() ? 0 : fault.occurrence[0].number, "error",
            text_of(fault, verdict.advice[i]), id_of(fault));
    }
    for (const std::u16string& problem : diagnosis.problems)
        add(number_named_in(problem, verdict.line), "error", qel::i18n::ustring_to_utf8(problem),
            id_of(problem));
    for (const Warning& warning : verdict.warnings)
        add(warning.token, "warning", warning.text, warning.id);
    return one;
}

std::vector<Case> cases_of(const preflight::Report& report) {
    std::vector<Case> cases;
    for (const preflight::GroupReport& group : report.groups) {
        Case& one = cases.emplace_back(Case{std::string(group.group->name), {}, group.looked_at});
        for (const preflight::Finding& finding : group.findings)
            if (about(finding.kind).severity != preflight::Severity::ok)
                one.remarks.push_back(remark(finding, one.name, *report.context));
    }
    return cases;
}

Case unread(const std::string& name, const std::string& why) {
    return {name, {{{name, {}}, {}, "error", one_line(why), {}}}};
}

std::string to_gcc(const std::vector<Case>& cases) {
    std::string text;
    std::vector<std::string_view> skipped;
    for (const Case& one : cases) {
        if (!one.looked_at) skipped.push_back(one.name);
        for (const Remark& said : one.remarks) {
            text.append(escape(said.where())).append(": ").append(said.level).append(": ");
            text.append(said.text);
            if (!said.id.empty()) text.append(" [").append(said.id).append("]");
            text.append("\n");
        }
    }
    return skipped.empty() ? text
                           : text.append(command_line)
                                 .append(": note: not looked at: ")
                                 .append(joined(skipped))
                                 .append("\n");
}

} // namespace orvane
