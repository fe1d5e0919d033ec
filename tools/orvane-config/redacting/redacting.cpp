// Command lines that can be shown to others.
#include "redacting/redacting.hpp"

#include "explaining/kinds.hpp"
#include "explaining/verdict.hpp"
#include "probing/settings.hpp"
#include "redacting/values.hpp"

#include <algorithm>
#include <stdexcept>

namespace orvane::redacting {
namespace {

Tokens replaced(const Tokens& tokens, Words& words) {
    Tokens made;
    const Reference* last = nullptr;
    for (const Occurrence& one : occurrences_of(tokens)) {
        const std::u16string& first = one[0].text;
        if (const Reference* const flag = reference_of(first)) {
            last = flag;
            made.push_back(first);
            if (one.size() == 2) made.push_back(value(one[1].text, *flag, words));
        } else {
            made.push_back(stray(first, last, words));
            if (const Reference* const meant = meant_flag(first)) last = meant;
        }
    }
    return made;
}

// --- what is compared: not what is said, but what it is said of

std::vector<std::size_t> token_numbers(const std::vector<Token>& tokens) {
    std::vector<std::size_t> numbers;
    numbers.reserve(tokens.size());
    for (const Token& token : tokens)
        // A placeholder has to stay one.
        numbers.push_back(2 * token.number + (token.sample.empty() ? 0 : 1));
    return numbers;
}

std::vector<std::string> names_in(const qel::config::ServerSettings& settings) {
    std::vector<std::string> names;
    for (const Setting& setting : settings_of(settings))
        for (const auto& line : setting.lines)
            names.push_back(line.first);
    return names;
}

bool same_faults(const Diagnosis& a, const Diagnosis& b) {
    const auto same = [](const Fault& one, const Fault& other) {
        return id_of(one) == id_of(other) && token_numbers(one.occurrence) == token_numbers(other.occurrence);
    };
    const auto ids = [](const Diagnosis& one) {
        std::vector<std::string_view> all;
        for (const std::u16string& problem : one.problems)
            all.push_back(id_of(problem));
        return all;
    };
    return std::ranges::equal(a.faults, b.faults, same) && ids(a) == ids(b) && a.involved == b.involved &&
           a.complete == b.complete && token_numbers(a.fixed) == token_numbers(b.fixed);
}

bool same_effects(const Effects& a, const Effects& b) {
    const auto same_redundant = [](const Redundant& one, const Redundant& other) {
        return token_numbers(one.occurrence) == token_numbers(other.occurrence) &&
               token_numbers(one.replaced_by.value_or(Occurrence())) ==
                   token_numbers(other.replaced_by.value_or(Occurrence()));
    };
    const auto same_occurrence = [](const Occurrence& one, const Occurrence& other) {
        return token_numbers(one) == token_numbers(other);
    };
    const auto same_origin = [&](const auto& one, const auto& other) {
        return one.first == other.first && std::ranges::equal(one.second, other.second, same_occurrence);
    };
    return a.completed == b.completed && std::ranges::equal(a.redundant, b.redundant, same_redundant) &&
           std::ranges::equal(a.origins, b.origins, same_origin);
}

bool same_verdict(const Verdict& a, const Verdict& b) {
    const auto same_warning = [](const Warning& one, const Warning& other) {
        return one.id == other.id && one.token == other.token;
    };
    return a.code() == b.code() && same_faults(a.diagnosis, b.diagnosis) &&
           same_effects(a.effects, b.effects) && std::ranges::equal(a.warnings, b.warnings, same_warning) &&
           names_in(a.answer.settings) == names_in(b.answer.settings);
}

/// The settings that differ between two lines.
std::vector<std::string> differing(const std::vector<Verdict>& two) {
    std::vector<std::string> names;
    for (const Difference& one : differences(two[0].answer.settings, two[1].answer.settings))
        names.push_back(one.before.name);
    return names;
}

std::vector<Verdict> verdicts_on(const std::vector<Tokens>& lines) {
    std::vector<Verdict> all;
    all.reserve(lines.size());
    for (const Tokens& line : lines)
        all.push_back(judge(line, true));
    return all;
}

} // namespace

std::vector<Tokens> redacted(const std::vector<Tokens>& lines) {
    Words words(lines);
    std::vector<Tokens> made;
    made.reserve(lines.size());
    for (const Tokens& line : lines)
        made.push_back(replaced(line, words));
    const auto before = verdicts_on(lines), after = verdicts_on(made);
    const bool same = std::ranges::equal(before, after, same_verdict) &&
                      (lines.size() != 2 || ((lines[0] == lines[1]) == (made[0] == made[1]) &&
                                             differing(before) == differing(after)));
    if (!same)
        throw std::runtime_error("cannot redact this command line: placeholders would change its faults, "
                                 "warnings or settings; replace "
                                 "private words by hand");
    return made;
}

} // namespace orvane::redacting
