// What to put in the place of a fault, and how to say it.
#include "explaining/replacement.hpp"

#include "explaining/flag_like.hpp"
#include "explaining/rules.hpp"
#include "probing/occurrence_text.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <deque>
#include <unordered_map>

namespace orvane {

using qel::i18n::utf8_to_ustring;

namespace {

bool is_stray(const std::u16string& text, bool of_a_command) {
    if (text.empty() || reference_of(text) != nullptr || text[0] == u'#' || is_for_a_shell(text))
        return false;
    if (!of_a_command && begins_as_flag(text)) return false;
    return !resembles_a_flag(text);
}

} // namespace

Edit edit_of(const FaultInLine& fault, std::size_t begin, std::size_t end, const std::vector<Token>& tokens) {
    Edit edit;
    edit.begin = begin;
    std::deque<Token> rest(tokens.begin(), tokens.end());
    const auto next = [&rest] {
        Token token = std::move(rest.front());
        rest.pop_front();
        return token;
    };
    while (!rest.empty()) {
        Occurrence& one = edit.occurrences.emplace_back(Occurrence{next()});
        if (kind_of(one[0].text) != FlagKind::value_flag) continue;
        // The value may have been a flag until now, and its value a stray.
        if (rest.empty() && end != fault.line.size()) {
            rest.assign(fault.line[end].begin(), fault.line[end].end());
            ++end;
        }
        if (!rest.empty()) one.push_back(next());
    }
    edit.end = end;
    return edit;
}

Advice replace(const FaultInLine& fault, std::size_t begin, std::size_t end, const std::vector<Token>& tokens,
               const std::string& sentence, const std::string& ending) {
    return {{sentence + shown(Occurrence(tokens)) + ending}, {}, edit_of(fault, begin, end, tokens)};
}

Advice remove(const FaultInLine& fault, std::size_t begin, std::size_t end, std::string sentence) {
    return {{std::move(sentence)}, {}, edit_of(fault, begin, end, {})};
}

Advice skip(const FaultInLine& fault, std::size_t begin, std::size_t end, std::string sentence) {
    Advice advice = remove(fault, begin, end, std::move(sentence));
    advice.edit.proposed = false;
    return advice;
}

std::vector<Token> with_placeholder(const Occurrence& occurrence) {
    const Reference& reference = reference_of(occurrence);
    const std::size_t number = occurrence.back().number;
    const std::u16string sample = utf8_to_ustring(reference.sample());
    Token value{sample, number, sample};
    if (const auto words = keywords(reference); !words.empty())
        value.text = utf8_to_ustring(words[0]);
    else if (reference.holds(Holds::path))
        value.text = u"/?" + utf8_to_ustring(std::to_string(number));
    else if (reference.form == Form::address)
        value.text = u"0";
    if (occurrence.size() == 2 && !occurrence[1].sample.empty()) return {};
    return {occurrence[0], value};
}

bool takes(const Token& flag, const std::u16string& value) {
    // Asked again by other rules, and by those for the faults nearby.
    static std::unordered_map<std::u16string, bool> known;
    const auto found = known.find(flag.text + u' ' + value);
    if (found != known.end()) return found->second;
    const bool taken = ask({{flag, {value}}}).consumed();
    constexpr std::size_t longest = 200; // of a value that is worth to be kept
    if (value.size() <= longest) known.emplace(flag.text + u' ' + value, taken);
    return taken;
}

bool takes(const Occurrence& occurrence) {
    return occurrence.size() == 2 ? takes(occurrence[0], occurrence[1].text) : ask({occurrence}).consumed();
}

std::u16string clean_value(const Reference& flag, std::u16string_view rest) {
    const std::u16string plain = trimmed(rest, blanks), clean = bare(rest);
    return clean != plain && takes({std::u16string(flag.wide)}, clean) ? clean : plain;
}

std::size_t end_of_strays(const WorkingLine& line, std::size_t from, bool of_a_command) {
    while (from != line.size() && is_stray(line[from][0].text, of_a_command))
        ++from;
    return from;
}

bool has_strays(const WorkingLine& line, std::size_t from) {
    return from != line.size() && is_stray(line[from][0].text, false);
}

bool has_unit_after(const WorkingLine& line, std::size_t at) {
    return has_strays(line, at + 1) && is_unit(lower(line[at + 1][0].text));
}

const Reference& reference_of(const Occurrence& occurrence) {
    return *reference_of(occurrence[0].text);
}

bool has_value(const Occurrence* occurrence) {
    return occurrence != nullptr && occurrence->size() == 2;
}

} // namespace orvane
