// What to tell an operator about a refusal, and what to put in its place.
#include "explaining/advice.hpp"

#include "explaining/rules.hpp"
#include "explaining/same_meaning.hpp"
#include "probing/occurrence_text.hpp"

#include "qel/config/error_code.hpp"

#include <span>

namespace orvane {
namespace {

// clang-format off
constexpr Rule* unknown_tokens[] = {
    limited,              // a flag that the server knows, but not at this place
    empty_token,
    own_option,
    swallowed_flag,       // the mistake is before the token
    mark_for_a_value,
    given_twice,
    lone_mark,            // the token has nothing to do with the server
    shell_syntax,
    program_before_flags,
    comment,
    goes_on,              // may look like a flag's name, but belongs to the value before it
    several_words,
    misspelt,             // the token was meant as a flag
    attached_value,
    before_its_flag,
    other_polarity,
    foreign_name,
    similar_name,
    split_by_the_shell,   // the token was meant as a value
    unknown_name,
    switch_value,
    repeated,
    surplus,
};

constexpr Rule* refused_values[] = {
    missing_value,
    swallowing_flag,      // the value is a flag, or none at all
    marked_value,
    dirty_value,          // the value is right, but for something around it
    similar_word,
    split_value,
    read_otherwise,       // the value has another form, or belongs to another flag
    similar_flag,
    swapped,
    in_the_way,           // the value cannot be guessed
    out_of_range,
    wrong_form,
};
// clang-format on

/// The line lacks the required flag.
Advice missing_flag(const FaultInLine& fault) {
    const Reference& required = flag_with(Trait::required);
    const std::u16string flag(required.wide);
    std::vector<Token> tokens = with_placeholder({{flag}});
    // A directory that overlaps with no other, so that the other rules can still be checked.
    tokens[1].text = u"/?";
    Advice advice{
        {"the required flag is missing: " + std::string(required.flag) + " <directory>"}, {flag}, {}};
    std::size_t at = fault.line.size();
    if (at != 0 && reference_of(fault.line[at - 1]).trait == Trait::limits_next) {
        --at;
        const Occurrence& last = fault.line[at];
        tokens.insert(tokens.end(), last.begin(), last.end());
    }
    advice.edit = edit_of(fault, at, fault.line.size(), tokens);
    return advice;
}

/// Whether the edit leads to anything but the same refusal.
bool helps(const FaultInLine& fault, const Edit& edit) {
    if (edit.occurrences.empty()) return true;
    CommandLine line = edit.occurrences;
    if (edit.begin != 0) line.insert(line.begin(), fault.line[edit.begin - 1]);
    const Answer answer = ask(line);
    return answer.consumed() || answer.text != fault.fault.text;
}

} // namespace

Advice advise(const FaultInLine& fault) {
    if (fault.at == fault.line.size()) return missing_flag(fault);
    const bool unknown = fault.fault.code == qel::config::error_code::unrecognized_flag();
    for (Rule* const rule : unknown ? std::span<Rule* const>(unknown_tokens) : refused_values) {
        auto advice = rule(fault);
        if (!advice || !helps(fault, advice->edit)) continue;
        // For a refused value, a later rule may say why.
        if (!unknown && !means_the_same(fault, advice->edit)) continue;
        ask_for_the_others(fault, *advice);
        name_what_is_left_out(fault, *advice);
        return *advice;
    }
    return skip(fault, fault.at, fault.at + 1, "the server does not take " + shown(fault.occurrence()));
}

} // namespace orvane
