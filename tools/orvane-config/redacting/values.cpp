// Values without what they tell about their owner.
#include "redacting/values.hpp"

#include "explaining/flag_like.hpp"
#include "explaining/meant_flags.hpp"
#include "explaining/rules.hpp"
#include "own/option_table.hpp"
#include "text/lists.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <set>
#include <utility>

namespace orvane::redacting {
namespace {

using qel::i18n::ustring_to_utf8;

bool nothing(std::u16string_view) {
    return false;
}

/// A number, perhaps with units: "64", "1h30m", "PT30S".
bool is_quantity(std::u16string_view word) {
    // Of a duration's ISO form, weeks, and the largest size.
    constexpr std::u16string_view more = u" p pt t w e ";
    const auto digit = [](char16_t c) { return (c >= u'0' && c <= u'9') || (c >= 0xFF10 && c <= 0xFF19); };
    while (!word.empty()) {
        const auto end = std::find_if(word.begin(), word.end(), digit);
        const std::u16string unit = lower(std::u16string(word.begin(), end));
        if (!unit.empty() && !is_unit(unit) && more.find(u" " + unit + u" ") == more.npos) return false;
        word.remove_prefix(static_cast<std::size_t>(std::find_if_not(end, word.end(), digit) - word.begin()));
    }
    return true;
}

void add_words(std::set<std::u16string>& words, std::string_view text) {
    std::u16string word;
    for (const char c : std::string(text) + " ") {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (letter) word += static_cast<char16_t>(c);
        if (!letter && !word.empty()) words.insert(lower(std::exchange(word, u"")));
    }
}

/// What the tool itself knows: the words of flags, of their values, and of other servers' flags.
bool is_known(std::u16string_view word) {
    static const std::set<std::u16string> known = [] {
        std::set<std::u16string> words;
        add_words(
            words,
            "on off yes no true false none all exe sudo env exec nohup nice time run start not disable "
            "enable "
            "info warn warnings err fatal critical crit alert emerg panic severe notice verbose required "
            "mutual peer "
            "purge drop discard delete remove archive save store null https http redis orvane");
        for (const Reference& one : references()) {
            add_words(words, one.flag);
            add_words(words, one.value);
            for (const Synonym& synonym : synonyms_of(one))
                add_words(words, synonym.name);
        }
        for (const Verb& verb : verbs)
            add_words(words, verb.name);
        for (const OwnOption& option : own_options)
            add_words(words, option.name);
        return words;
    }();
    return known.contains(lower(std::u16string(word))) || is_quantity(word);
}

bool is_protocol(std::u16string_view word) {
    constexpr std::u16string_view names[] = {u"TLSv1", u"SSLv2", u"SSLv3", u"DTLSv1", u"ALL"};
    return contains(names, word);
}

bool is_port(std::u16string_view text) {
    return text.find_first_not_of(u"+-0123456789") == text.npos;
}

/// In an address that is written in another way.
bool of_an_address(std::u16string_view word) {
    constexpr std::u16string_view names[] = {u"http", u"https", u"tcp", u"redis", u"localhost"};
    return all_digits(word) || contains(names, lower(std::u16string(word)));
}

/// [host:]port
std::u16string address(std::u16string_view text, Words& words) {
    const std::size_t colon = text.rfind(u':');
    const std::u16string_view port = text.substr(colon == text.npos ? 0 : colon + 1);
    if (!is_port(port) || text.find(u'/') != text.npos) return words.replaced(text, of_an_address);
    return colon == text.npos ? std::u16string(text)
                              : words.host(text.substr(0, colon)) + u":" + std::u16string(port);
}

/// A path; the server itself makes the directory .zep_deployed.
std::u16string path(std::u16string_view text, Words& words) {
    constexpr std::u16string_view own = u".zep_deployed";
    const std::size_t at = text.find(own), end = at + own.size();
    if (at == text.npos || (end != text.size() && !is_one_of(text[end], u"/\\")))
        return words.replaced(text, nothing);
    return words.replaced(text.substr(0, at), nothing).append(own) + path(text.substr(end), words);
}

/// <provider>@[<host>:]<port>
std::u16string cache(std::u16string_view text, Words& words) {
    const std::size_t at = text.find(u'@');
    if (at == text.npos) return words.replaced(text, of_an_address);
    return words.replaced(text.substr(0, at), is_known) + u"@" + address(text.substr(at + 1), words);
}

/// <scheme>://<host>[:<port>][/...]
std::u16string origin(std::u16string_view text, Words& words) {
    if (text == u"null") return std::u16string(text);
    const std::size_t scheme = text.find(u"://");
    if (scheme == text.npos) return address(text, words);
    const std::size_t begin = scheme + 3, end = std::min(text.find(u'/', begin), text.size());
    return words.replaced(text.substr(0, begin), is_known) + address(text.substr(begin, end - begin), words) +
           words.replaced(text.substr(end), nothing);
}

std::u16string origins(std::u16string_view text, Words& words) {
    std::u16string made;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(u", "), text.size());
        made += end == 0 ? std::u16string(1, text[0]) : origin(text.substr(0, end), words);
        text.remove_prefix(std::max<std::size_t>(end, 1));
    }
    return made;
}

/// Known words up to the first space, or to the second one after a semicolon, then a command.
std::u16string handler(std::u16string_view text, Words& words) {
    std::size_t end = std::min(text.find(u' '), text.size());
    if (text.substr(0, end).ends_with(u';')) end = std::min(text.find(u' ', end + 1), text.size());
    return words.replaced(text.substr(0, end), is_known) + words.replaced(text.substr(end), nothing);
}

std::u16string protocols(std::u16string_view text, Words& words) {
    return words.replaced(text, is_protocol);
}

std::u16string known_words(std::u16string_view text, Words& words) {
    return words.replaced(text, is_known);
}

std::u16string all_words(std::u16string_view text, Words& words) {
    return words.replaced(text, nothing);
}

constexpr std::u16string (*redactions[])(std::u16string_view text, Words& words) = {
#define ZEP_FORM(form, conversion, reader, fault, redaction, ...) redaction,
#define ZEP_FOREIGN_FORM(...)
#include "reference/forms.def"
};

std::u16string by_form(std::u16string_view text, Form form, Words& words) {
    return redactions[place_of(form)](text, words);
}

/// But for a few slips. A word more may be somebody's name.
bool is_nearly(const Reference& flag, std::u16string_view name) {
    const std::u16string typed = letters(name);
    if (typed == letters(flag.wide)) return true;
    if (split_words(normalized(name)).size() > split_words(normalized(flag.wide)).size()) return false;
    const std::size_t most = std::min<std::size_t>(3, 1 + typed.size() / 4);
    return distance(typed, letters(flag.wide), most) <= most;
}

/// Where a flag is in the value, after a space; else the end.
std::size_t flag_inside(std::u16string_view text) {
    for (std::size_t at = 0; (at = text.find(u" --", at)) != text.npos; ++at)
        if (reference_of(text.substr(at + 1, text.find_first_of(u" =", at + 1) - at - 1)) != nullptr)
            return at;
    return text.size();
}

} // namespace

std::u16string value(std::u16string_view text, const Reference& flag, Words& words) {
    const std::u16string whole(text);
    if (begins_as_flag(text) && is_meant_as_flag(whole)) return stray(text, nullptr, words);
    const std::size_t inside = flag.holds(Holds::command) ? text.size() : flag_inside(text);
    std::u16string made = by_form(text.substr(0, inside), flag.form, words);
    if (inside == text.size()) return made;
    const std::size_t end = std::min(text.find_first_of(u" =", inside + 1), text.size());
    return made.append(text.substr(inside, end - inside)) + value(text.substr(end), flag, words);
}

const Reference* meant_flag(const std::u16string& token) {
    if (const Reference* const flag = reference_of(token)) return flag;
    const std::u16string name(split_token(token).name);
    if (const Reference* const flag = flag_spelled(name)) return flag;
    // A plain word, or a path.
    if (!begins_as_flag(token)) return nullptr;
    if (const auto synonym = synonym_of(ustring_to_utf8(normalized(name)));
        synonym && synonym->reference != nullptr)
        return synonym->reference;
    const auto like = flags_like(name);
    return like.empty() ? nullptr : like[0];
}

std::u16string stray(std::u16string_view text, const Reference* flag, Words& words) {
    const auto [name, separator, rest] = split_token(text);
    const Reference* const meant = meant_flag(std::u16string(text));
    if (meant != nullptr || begins_as_flag(text)) {
        // A misspelt flag is no secret, and what was meant cannot be told without it.
        const bool stays = meant != nullptr && is_nearly(*meant, name);
        std::u16string made = stays ? std::u16string(name) : words.replaced(name, is_known);
        if (separator == 0) return made;
        const std::size_t between = text.size() - name.size() - rest.size();
        return made.append(text.substr(name.size(), between)) + stray(rest, meant, words);
    }
    if (flag != nullptr && !flag->is_switch()) return by_form(text, flag->form, words);
    const bool is_path = text.find_first_of(u"/\\@") != text.npos;
    return is_path ? path(text, words) : words.replaced(text, is_known);
}

} // namespace orvane::redacting
