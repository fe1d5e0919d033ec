// Rules about names that other servers have for a setting, or for its reverse.
#include "explaining/flag_like.hpp"
#include "explaining/meant_flags.hpp"
#include "explaining/rules.hpp"
#include "text/lists.hpp"
#include "text/quoting.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <utility>

namespace orvane {
namespace {

using qel::i18n::ustring_to_utf8;
using qel::i18n::utf8_to_ustring;

/// The value of another server's flag in a form for this server; empty when it cannot be converted.
using Convert = std::u16string(const std::u16string& value);

std::u16string as_given(const std::u16string& value) {
    return value;
}

std::u16string unknown(const std::u16string&) {
    return {};
}

std::u16string its_directory(const std::u16string& value) {
    const std::size_t slash = value.find_last_of(u"/\\");
    return slash == value.npos ? u"" : value.substr(0, slash);
}

std::u16string with_unit(const std::u16string& value) {
    return all_digits(value) ? value + u"s" : value;
}

constexpr Convert* conversions[] = {
#define ZEP_FORM(form, conversion, ...) conversion,
#define ZEP_FOREIGN_FORM(form, conversion, ...) conversion,
#include "reference/forms.def"
};

/// The value in a form that the flag takes. A part of it is certain if the other flag's name says it: "--redis".
std::optional<Token> readable(const Token& flag, const std::u16string& value, const Synonym& synonym,
                              std::size_t number) {
    const auto words = split_words(utf8_to_ustring(std::string(synonym.name)));
    for (const Reading& reading : readings(*synonym.reference, value)) {
        if (!takes(flag, reading.value)) continue;
        Token token = token_of(reading, number);
        const std::u16string provider = token.text.substr(0, token.text.find(u'@'));
        if (token.asks_for_a_part() && contains(words, provider)) token.sample.clear();
        return token;
    }
    return std::nullopt;
}

/// The value that another server's flag has, as this server's flag wants it.
std::vector<Token> translated(const FaultInLine& fault, const Synonym& synonym, const std::u16string& given,
                              std::size_t number) {
    const Token flag{std::u16string(synonym.reference->wide), fault.number()};
    if (!synonym.value.empty()) return {flag, {utf8_to_ustring(synonym.value), fault.number()}};
    if (synonym.reference->is_switch()) return {flag};
    const std::u16string value = conversions[place_of(synonym.kind)](given);
    if (value.empty()) return with_placeholder({flag});
    // The server would take a number with a unit, and read it as hours.
    if (synonym.kind != Form::seconds && takes(flag, value)) return {flag, {value, number}};
    if (const auto token = readable(flag, value, synonym, number)) return {flag, *token};
    if (synonym.kind == Form::seconds) return with_placeholder({flag});
    return {flag, {value, number}};
}

/// Another server's flag in the line, with its value.
struct ForeignFlag {
    Synonym synonym;
    std::u16string value{};
    std::size_t number;        ///< of the token that has the value
    std::size_t begin, end;    ///< of both
    std::size_t end_of_strays; ///< of what follows, too
};

std::optional<ForeignFlag> foreign_at(const WorkingLine& line, std::size_t at) {
    const std::u16string& token = line[at][0].text;
    if (!is_flag_like(token)) return std::nullopt;
    const auto [name, separator, rest] = split_token(token);
    std::u16string words = normalized(name);
    // "-p8080"
    const bool attached = words.size() > 1 && all_digits(words.substr(1));
    const std::u16string number = attached ? words.substr(1) : u"";
    if (attached) words.resize(1);
    const auto synonym = synonym_of(ustring_to_utf8(words));
    if (!synonym) return std::nullopt;
    ForeignFlag found{*synonym, separator != 0 ? bare(rest) : number, line[at][0].number, at,
                      at + 1,   end_of_strays(line, at + 1)};
    const Reference* const reference = synonym->reference;
    const bool has_own = reference != nullptr && (reference->is_switch() || !synonym->value.empty());
    if (separator == 0 && !attached && !has_own && found.end_of_strays != at + 1) {
        found.value = line[at + 1][0].text;
        found.number = line[at + 1][0].number;
        ++found.end;
    }
    if (reference != nullptr && reference->holds(Holds::quantity) && has_unit_after(line, found.end - 1))
        found.value += u" " + line[found.end++][0].text;
    return found;
}

constexpr auto said_of_flag = "this server's flag for that is ";

Advice with_suggestion(Advice advice, const Synonym& synonym) {
    advice.suggestions = {std::u16string(synonym.reference->wide)};
    return advice;
}

/// The other half of its address: what follows it, or the only one in the line. Then nothing else may set the address.
std::optional<ForeignFlag> other_half(const FaultInLine& fault, const ForeignFlag& one) {
    const WorkingLine& line = fault.line;
    const auto half_at = [&](std::size_t at) {
        auto other = foreign_at(line, at);
        return other && other->synonym.reference == one.synonym.reference ? other : std::nullopt;
    };
    if (one.end == line.size()) return std::nullopt;
    if (auto next = half_at(one.end)) return next;
    std::optional<ForeignFlag> found;
    for (std::size_t i = 0; i != line.size(); ++i) {
        if (i == fault.at) continue;
        auto other = half_at(i);
        const bool is_set = reference_of(line[i][0].text) == one.synonym.reference;
        if (is_set || (other && (found || i < fault.at))) return std::nullopt;
        if (other) found = std::move(other);
    }
    return found;
}

/// "web1" and "8080" as an address that the flag takes, if it takes one.
std::optional<Token> address_of(const Token& flag, const std::u16string& host, const std::u16string& port,
                                const Synonym& synonym) {
    const bool ipv6 = host.find(u':') != host.npos && host[0] != u'[';
    const std::u16string address = (ipv6 ? u"[" + host + u"]" : host) + u":" + port;
    if (takes(flag, address)) return Token{address, flag.number};
    return readable(flag, address, synonym, flag.number);
}

/// "--host H --port P" is one address here.
std::optional<Advice> host_and_port(const FaultInLine& fault, const ForeignFlag& one) {
    const auto other = other_half(fault, one);
    const Token flag{std::u16string(one.synonym.reference->wide), fault.number()};
    if (!other) return std::nullopt;
    const bool host_first = all_digits(other->value);
    const ForeignFlag &host = host_first ? one : *other, &port = host_first ? *other : one;
    const bool is_host = host.synonym.kind == Form::host || !takes(flag, host.value);
    if (!is_host || port.synonym.kind == Form::host || !all_digits(port.value)) return std::nullopt;
    const auto address = address_of(flag, host.value, port.value, one.synonym);
    if (!address) return std::nullopt;
    const auto typed = [&](std::size_t at) { return shown(fault.line[at][0].text); };
    Advice advice = replace(fault, fault.at, one.end, {flag, *address},
                            typed(fault.at) + " and " + typed(other->begin) + " are one flag here: ");
    const CommandLine between = fault.line.part(one.end, other->begin);
    advice.edit.occurrences.insert(advice.edit.occurrences.end(), between.begin(), between.end());
    advice.edit.end = other->end;
    return with_suggestion(std::move(advice), one.synonym);
}

} // namespace

std::optional<Advice> other_polarity(const FaultInLine& fault) {
    const auto [name, separator, rest] = split_token(fault.token());
    if (!is_flag_like(fault.token())) return std::nullopt;
    auto polarity = polarity_of(name);
    if (!polarity) return std::nullopt;
    const Reference& flag = *polarity->flag;
    const std::string meant(flag.flag), thing(flag.thing);
    if (!flag.is_switch())
        return remove(fault, fault.at, fault.at + 1,
                      "there is no such flag: to set nothing, leave out both it and " + meant);
    if (separator != 0 && means_off(rest)) polarity->is_default = !polarity->is_default;
    const bool on = flag.way == Way::on;
    if (polarity->is_default)
        return remove(fault, fault.at, fault.at + 1,
                      thing + " is " + (on ? "off" : "on") + " by default: leave the flag out; " + meant +
                          " switches it " + (on ? "on" : "off"));
    Advice advice{{"the flag that switches " + thing + (on ? " on is " : " off is ") + meant},
                  {std::u16string(flag.wide)},
                  {}};
    advice.edit = edit_of(fault, fault.at, fault.at + 1, {{std::u16string(flag.wide), fault.number()}});
    return advice;
}

std::optional<Advice> foreign_name(const FaultInLine& fault) {
    const auto given = foreign_at(fault.line, fault.at);
    if (!given) return std::nullopt;
    const Synonym& synonym = given->synonym;
    if (synonym.reference == nullptr) return skip(fault, fault.at, given->end_of_strays, synonym.advice);
    if (auto advice = host_and_port(fault, *given)) return advice;
    return with_suggestion(replace(fault, fault.at, given->end,
                                   translated(fault, synonym, given->value, given->number), said_of_flag),
                           synonym);
}

} // namespace orvane
