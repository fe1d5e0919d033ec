// What is replaced in a text.
#include "redacting/redactor.hpp"

#include "explaining/flag_like.hpp"
#include "explaining/meant_flags.hpp"
#include "probing/probing.hpp"
#include "text/lists.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane::redacting {
namespace {

using qel::i18n::ustring_to_utf8;
using qel::i18n::utf8_to_ustring;

constexpr Stays* stays_by_form[] = {
#define ZEP_FORM(form, conversion, reader, fault, redaction, ...) redaction,
#define ZEP_FOREIGN_FORM(...)
#include "reference/forms.def"
};

/// But for two slips. A word more may be somebody's name.
bool is_nearly(const Reference& flag, std::u16string_view name) {
    const std::u16string typed = letters(name);
    if (split_words(normalized(name)).size() > split_words(normalized(flag.wide)).size()) return false;
    const std::size_t most = typed.size() > 6 ? 2 : 1;
    return distance(typed, letters(flag.wide), most) <= most;
}

/// Whether more is in a name than its comparison with those of flags looks at: it may be long, or have a terminal's codes.
bool hides_words(std::u16string_view name) {
    constexpr std::size_t longest = 100, most_of_codes = 8;
    const auto size = static_cast<std::size_t>(std::ranges::count_if(name, is_of_a_word));
    return name.size() > longest || size > letters(name).size() + most_of_codes;
}

/// Where a flag begins within the text; else its end. After \n, too, which somebody took for the end of a line.
std::size_t next_flag(std::u16string_view text) {
    for (std::size_t at = 0; (at = text.find(u"--", at + 1)) != text.npos;) {
        const bool begins = !is_of_a_word(text[at - 1]) || text.substr(0, at).ends_with(u"\\n");
        if (begins && at + 2 != text.size() && is_of_a_word(text[at + 2])) return at;
    }
    return text.size();
}

/// Else it is in a URL before or after one, in brackets, or no name that a host can have.
bool is_host(const Word& word) {
    const std::u16string_view text = word.word();
    const bool before_one = word.after() == u'@' || word.text.substr(word.end).starts_with(u"://");
    const bool in_marks = word.before() != 0 && is_one_of(word.before(), u"<{($%");
    return !word.in_path && !before_one && !in_marks && text.find(u'_') == text.npos &&
           text.find_first_not_of(u"0123456789.-") != text.npos;
}

} // namespace

Tokens Redactor::line(const Tokens& tokens) {
    Tokens made;
    flag_ = nullptr;
    for (const Occurrence& one : occurrences_of(tokens)) {
        const std::u16string& first = one[0].text;
        const Reference* const flag = reference_of(first);
        if (flag != nullptr) flag_ = flag;
        const bool is_name = begins_as_flag(first) || flag_spelled(split_token(first).name) != nullptr ||
                             (first.size() == 2 && is_flag_like(first)); // "/D"
        made.push_back(flag != nullptr ? first : token(first, is_name));
        if (one.size() == 2)
            made.push_back(token(one[1].text, begins_as_flag(one[1].text) && is_meant_as_flag(one[1].text)));
    }
    return made;
}

std::string Redactor::file(const std::string& name) {
    return ustring_to_utf8(kept(utf8_to_ustring(name), path));
}

/// The parts from flag to flag. None begins in a command.
std::u16string Redactor::token(std::u16string_view text, bool is_name) {
    std::u16string made;
    while (!text.empty()) {
        const bool whole = !is_name && flag_ != nullptr && flag_->holds(Holds::command);
        const std::size_t end = whole ? text.size() : next_flag(text);
        made += is_name ? named(text.substr(0, end)) : value(text.substr(0, end));
        text.remove_prefix(end);
        is_name = true;
    }
    return made;
}

std::u16string Redactor::named(std::u16string_view text) {
    const auto [first, separator, rest] = split_token(text);
    const auto begin = static_cast<std::size_t>(first.data() - text.data()), end = begin + first.size();
    std::u16string made = std::u16string(text.substr(0, begin)) + name(first);
    if (separator == 0) return made;
    made += text.substr(end, text.size() - end - rest.size());
    return made + value(rest);
}

/// A misspelt flag is no secret, and what was meant cannot be told without it.
std::u16string Redactor::name(std::u16string_view text) {
    flag_ = hides_words(text) ? nullptr : flag_spelled(text);
    if (flag_ != nullptr) return std::u16string(text);
    if (hides_words(text)) return kept(text, names);
    std::u16string words = normalized(text);
    if (words.size() > 1 && words.size() < 7 && all_digits(words.substr(1))) words.resize(1); // "-p8080"
    if (const auto synonym = synonym_of(ustring_to_utf8(words))) {
        flag_ = synonym->reference;
        return std::u16string(text);
    }
    if (const auto like = flags_like(text); !like.empty()) flag_ = like[0];
    return flag_ != nullptr && is_nearly(*flag_, text) ? std::u16string(text) : kept(text, names);
}

std::u16string Redactor::value(std::u16string_view text) {
    const Form form = flag_ == nullptr ? Form::none : flag_->form;
    const bool is_path = form == Form::none && text.find_first_of(slashes) != text.npos;
    return kept(text, is_path ? path : stays_by_form[place_of(form)]);
}

std::u16string Redactor::kept(std::u16string_view text, Stays* stays) {
    if (stays == quantity && is_quantity(text)) return std::u16string(text);
    if (stays == quantity && flag_->holds(Holds::port)) stays = hosts;
    const std::u16string_view also = stays == hosts ? of_hosts : stays == tls_names ? u"." : u"";
    std::u16string made;
    for (Word word{text, flag_}; word.next(also);) {
        if (word.kind == Kind::mark) {
            const bool lone_slash = word.word() == u"/" && word.before() != u'/' && word.after() != u'/';
            word.in_path = lone_slash || (word.in_path && !is_one_of(word.word()[0], u", "));
        }
        const bool is_public = word.kind == Kind::mark || (word.kind == Kind::word && stays(word));
        word.near_root = word.near_root && is_public;
        made += is_public ? std::u16string(word.word()) : replaced(word, stays);
    }
    return made;
}

/// For an address, a word, or all of a host that it begins.
std::u16string Redactor::replaced(Word& word, Stays* stays) {
    const std::u16string_view text = word.word();
    if (word.kind == Kind::ipv4) return placeholders_.ipv4(text);
    if (word.kind == Kind::ipv6) return placeholders_.ipv6(text);
    const bool is_number = all_digits(text.substr(0, 1)) && text.find_first_of(of_hosts) == text.npos;
    if (stays == hosts && is_host(word) && is_number) return placeholders_.word(text); // misspelt
    if (stays == hosts) return is_host(word) ? placeholders_.host(text) : kept(text, nothing);
    constexpr std::size_t longest = 255;
    Word whole{word.text.substr(word.begin, longest)};
    whole.next(of_hosts);
    const std::u16string* const host = placeholders_.known_host(whole.word());
    if (host == nullptr || stays == names) return placeholders_.word(text);
    word.end = word.begin + whole.end;
    return *host;
}

} // namespace orvane::redacting
