// Command lines that can be shown to others: what the tool finds in them stays.
#include "redacting/redactor.hpp"

#include "explaining/hazards.hpp"
#include "explaining/kinds.hpp"
#include "explaining/verdict.hpp"
#include "probing/occurrence_text.hpp"
#include "probing/settings.hpp"
#include "text/lists.hpp"
#include "text/quoting.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>

namespace orvane::redacting {
namespace {

/// What the tool finds, and where.
struct Finding {
    std::string what;
    std::vector<std::size_t> tokens{};
    std::string flags{};  ///< where it is about no token
    std::u16string why{}; ///< the reason, without words that are typed

    bool operator==(const Finding& other) const {
        return what == other.what && tokens == other.tokens && why == other.why;
    }
};
using Findings = std::vector<Finding>;

/// The words of command lines, as they are and as advice may have them.
class TypedWords {
public:
    explicit TypedWords(const std::vector<const CommandLine*>& lines) {
        for (const CommandLine* const line : lines)
            for (const Token& token : tokens_in(*line))
                for (const std::u16string& text : {token.text, folded(token.text)})
                    each_word(text, [this](std::u16string word) { words_.insert(std::move(word)); });
    }

    /// The words of a sentence that come from the tool. A long value is cut, and amounts may have other units.
    std::u16string others(const std::string& sentence) const {
        std::u16string text;
        each_word(qel::i18n::utf8_to_ustring(sentence), [&](const std::u16string& word) {
            const bool is_plain =
                std::ranges::all_of(word, [](char16_t c) { return c >= u'a' && c <= u'z'; });
            const auto typed = words_.lower_bound(word);
            const bool begins_one = typed != words_.end() && typed->starts_with(word);
            if (is_plain && word.size() > 1 && !begins_one) text += word + u' ';
        });
        return text;
    }

private:
    template <class Take>
    static void each_word(const std::u16string& text, Take take) {
        for (Word word{text}; word.next();)
            if (word.kind == Kind::word) take(lower(std::u16string(word.word())));
    }

    std::set<std::u16string> words_{};
};

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

void add_reasons(const Verdict& verdict, const TypedWords& typed, Findings& all) {
    for (std::size_t i = 0; i != verdict.advice.size(); ++i)
        for (const std::string& sentence : verdict.advice[i].sentences)
            all.push_back({"reason for a refusal",
                           numbers(verdict.diagnosis.faults[i].occurrence),
                           {},
                           typed.others(sentence)});
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

Findings findings(const Verdict& verdict, const TypedWords& typed) {
    Findings all;
    add_faults(verdict.diagnosis, all);
    add_reasons(verdict, typed, all);
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

void compare_verdicts(const Verdict& before, const Verdict& after) {
    const TypedWords typed({&before.line, &after.line});
    compare(findings(before, typed), findings(after, typed), after.line);
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
        compare_verdicts(before[i], after[i]);
    if (lines.size() == 2) compare(findings_between(lines, before), findings_between(made, after), {});
    return made;
}

} // namespace orvane::redacting
