// What stands for what is private.
#include "redacting/placeholders.hpp"

#include "text/lists.hpp"
#include "text/spelling.hpp"

#include <algorithm>
#include <string>
#include <utility>

namespace orvane::redacting {
namespace {

bool is_small(char16_t c) {
    return c >= u'a' && c <= u'z';
}

bool is_capital(char16_t c) {
    return c >= u'A' && c <= u'Z';
}

std::u16string digits_of(std::size_t number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

/// No known word has such letters.
std::u16string letters_of(std::size_t number, char16_t first) {
    std::u16string text = digits_of(number);
    for (char16_t& c : text)
        c = static_cast<char16_t>(c - u'0' + u'a');
    return first + text;
}

std::u16string upper(std::u16string text) {
    std::ranges::transform(text, text.begin(), [](char16_t c) {
        return is_small(c) ? static_cast<char16_t>(c - u'a' + u'A') : c;
    });
    return text;
}

/// What a warning about alphabets looks at: a letter of full width, or one drawn like a Latin one beside Latin ones.
std::u16string_view mark_of_alphabets(std::u16string_view word) {
    const auto odd = std::ranges::find_if(word, looks_latin);
    if (odd == word.end()) return u"";
    if (*odd >= 0xFF01) return u"\uFF41";
    return std::ranges::any_of(word, is_small) || std::ranges::any_of(word, is_capital) ? u"\u0430" : u"";
}

std::u16string like(std::u16string_view word, std::size_t number) {
    constexpr std::size_t most_digits = 20; // of any number that a flag takes
    if (all_digits(word))
        return std::u16string(word.size() > most_digits ? most_digits : 0, u'9') +
               digits_of(100'000 + number);
    std::u16string made = (all_digits(word.substr(0, 1)) ? u"1" : u"") + letters_of(number, u'x');
    const bool capitals = std::ranges::none_of(word, is_small) && std::ranges::any_of(word, is_capital);
    if (capitals) made = upper(made);
    return made.append(mark_of_alphabets(word));
}

} // namespace

std::u16string Placeholders::word(std::u16string_view text) {
    const auto [known, added] = words_.try_emplace(std::u16string(text));
    if (added) known->second = like(text, words_.size() - 1);
    return known->second;
}

std::u16string Placeholders::host(std::u16string_view name) {
    const auto [known, added] = hosts_.try_emplace(std::u16string(name));
    if (!added) return known->second;
    const std::u16string made =
        letters_of(hosts_.size() - 1, u'h').append(mark_of_alphabets(name)) + u".example.org";
    std::u16string& first = lower_hosts_.try_emplace(lower(std::u16string(name)), made).first->second;
    known->second = first.empty() || first == made ? made : upper(std::exchange(first, u""));
    return known->second;
}

const std::u16string* Placeholders::known_host(std::u16string_view name) const {
    const auto known = hosts_.find(std::u16string(name));
    return known == hosts_.end() ? nullptr : &known->second;
}

std::u16string Placeholders::ipv4(std::u16string_view address) {
    constexpr std::u16string_view own[] = {u"127.0.0.1", u"0.0.0.0"};
    if (contains(own, address)) return std::u16string(address);
    const auto [known, added] = addresses_.try_emplace(std::u16string(address));
    if (!added) return known->second;
    constexpr std::u16string_view networks[] = {u"192.0.2.", u"198.51.100.", u"203.0.113."};
    constexpr std::size_t hosts = 254;
    const std::size_t number = addresses_.size() - 1,
                      network = std::min(number / hosts, std::size(networks) - 1);
    return known->second = std::u16string(networks[network]) + digits_of(number - network * hosts + 1);
}

std::u16string Placeholders::ipv6(std::u16string_view address) {
    constexpr std::u16string_view own[] = {u"::1", u"::"};
    if (contains(own, address)) return std::u16string(address);
    const auto [known, added] = addresses_.try_emplace(std::u16string(address));
    // Its last part is a number, which may be taken for a port, or it is none.
    const bool is_number = all_digits(address.substr(address.rfind(u':') + 1));
    const std::size_t number = addresses_.size(), high = number / 100;
    if (added)
        known->second = u"2001:db8::" + (high == 0 ? u"" : digits_of(high) + u":") +
                        (is_number ? u"" : u"a") + digits_of(number % 100);
    return known->second;
}

} // namespace orvane::redacting
