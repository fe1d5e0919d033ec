// Command lines that can be shown to others: what the tool finds in them stays.
#include "redacting/redactor.hpp"

#include "explaining/hazards.hpp"
#include "explaining/kinds.hpp"
#include "explaining/verdict.hpp"
#include "probing/occurrence_text.hpp"
#include "probing/settings.hpp"
#include "text/lists.hpp"
#include "text/quoting.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace orvane::redacting {
namespace {

/// What the tool finds, and where: not what it says of it.
struct Finding {
    std::string what;
    std::vector<std::size_t> tokens{};
    std::string flags{}; ///< where it is about no token

    bool operator==(const Finding& other) const { return what == other.what && tokens == other.tokens; }
};
using Findings = std::vector<Finding>;

std::vector<std::size_t> numbers(const Occurrence& occurrence) {
    std::vector<std::size_t> all;
    for (const Token& token : occurrence)
        all.push_back(token.number);
    return all;
}

void add_faults(const Diagnosis& diagnosis, Findings& all) {
    for (const Fault& fault : diagnosis.faults)
        all.push_back({"fault " + std::string(id_of(fault)), numbers(fault.occurrence)});
    const std::string flags = joined(diagnosis.involved, " and ", qel::i18n::ustring_to_utf8);
    for (const std::u16string& problem : diagnosis.problems)
        all.push_back({"fault " + std::string(id_of(problem)), {}, flags});
    all.push_back({diagnosis.complete ? "complete fix" : "incomplete fix"});
    for (const Token& token : diagnosis.fixed)
        all.push_back({token.sample.empty() ? "fixed token" : "<value> to fill in", {token.number}});
}

void add_effects(const Effects& effects, Findings& all) {
    for (const Redundant& one : effects.redundant) {
        all.push_back({"redundancy", numbers(one.occurrence)});
        all.push_back({"repetition", numbers(one.replaced_by.value_or(Occurrence()))});
    }
    for (const auto& [setting, origins] : effects.origins)
        for (const Occurrence& origin : origins)
            all.push_back({"setting " + setting, numbers(origin)});
    for (const std::string& setting : effects.completed)
        all.push_back({"completed setting " + setting});
}

Findings findings(const Verdict& verdict) {
    Findings all;
    add_faults(verdict.diagnosis, all);
    for (const Warning& warning : verdict.warnings)
        if (hazard_of(warning.id) == nullptr) // a secret is gone, and whom it exposes is private
            all.push_back({"warning " + std::string(warning.id), {warning.token}});
    add_effects(verdict.effects, all);
    for (const Setting& setting : settings_of(verdict.answer.settings))
        for (const auto& line : setting.lines)
            all.push_back({"setting " + line.first});
    return all;
}

Findings findings_between(const std::vector<Tokens>& lines, const std::vector<Verdict>& verdicts) {
    Findings all;
    if (lines[0] == lines[1]) all.push_back({"equality of the lines"});
    for (const Difference& one : differences(verdicts[0].answer.settings, verdicts[1].answer.settings))
        all.push_back({"difference in " + one.before.name});
    return all;
}

/// The flag, and which tokens.
std::string place(const Finding& finding, const CommandLine& line) {
    if (!finding.flags.empty()) return finding.flags;
    const std::size_t number = finding.tokens.empty() ? 0 : finding.tokens[0];
    for (const Occurrence& one : line)
        if (number != 0 && one.back().number >= number)
            return (reference_of(one[0].text) == nullptr ? "" : shown(one[0].text) + ", ") + numbers_of(one);
    return "the command line";
}

void compare(const Findings& before, const Findings& after, const CommandLine& line) {
    const auto [lost, found] = std::ranges::mismatch(before, after);
    if (lost == before.end() && found == after.end()) return;
    const bool is_lost = lost != before.end() && !contains(after, *lost);
    const Finding& one = is_lost || found == after.end() ? *lost : *found;
    throw std::runtime_error("cannot redact " + place(one, line) + ": with placeholders, the " + one.what +
                             " would be " + (is_lost ? "lost" : "new") + "; replace private words by hand");
}

std::vector<Verdict> verdicts_on(const std::vector<Tokens>& lines) {
    std::vector<Verdict> all;
    all.reserve(lines.size());
    for (const Tokens& line : lines)
        all.push_back(judge(line, true));
    return all;
}

std::vector<Verdict> verdicts_in_private(const std::vector<Tokens>& lines) {
    try {
        return verdicts_on(lines);
    } catch (const std::exception&) {
        throw std::runtime_error(
            "cannot redact the command line: the tool fails with it; without --redact it says how");
    }
}

} // namespace

std::vector<Tokens> Redactor::lines(const std::vector<Tokens>& lines) {
    std::vector<Tokens> made;
    for (int pass = 0; pass != 2; ++pass) { // in the second one, hosts are known wherever they are
        made.clear();
        for (const Tokens& one : lines)
            made.push_back(line(one));
    }
    const auto after = verdicts_on(made), before = verdicts_in_private(lines);
    for (std::size_t i = 0; i != lines.size(); ++i)
        compare(findings(before[i]), findings(after[i]), after[i].line);
    if (lines.size() == 2) compare(findings_between(lines, before), findings_between(made, after), {});
    return made;
}

} // namespace orvane::redacting
