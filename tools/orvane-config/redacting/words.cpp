// Words that stand for others.
#include "redacting/words.hpp"

#include "text/invisible.hpp"
#include "text/lists.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane::redacting {
namespace {

bool is_digit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

bool is_capital(char16_t c) {
    return c >= u'A' && c <= u'Z';
}

bool is_letter(char16_t c) {
    return is_capital(c) || (c >= u'a' && c <= u'z');
}

bool is_of_a_word(char16_t c) {
    if (c < 0x80) return is_letter(c) || is_digit(c);
    return !is_invisible(c) && !is_one_of(c, quotes) && !is_one_of(c, dashes) && c != u'\u2022';
}

/// How much of the text is an address, or nearly one: digits and at least three dots.
std::size_t size_of_address(std::u16string_view text) {
    std::size_t size = std::min(text.find_first_not_of(u"0123456789."), text.size());
    while (size != 0 && text[size - 1] == u'.')
        --size;
    const std::u16string_view numbers = text.substr(0, size);
    return is_digit(text[0]) && std::count(numbers.begin(), numbers.end(), u'.') >= 3 ? size : 0;
}

enum class Piece { between, word, number_of_address, address };

/// Calls `see` for each word, for what is between them, and for each address.
template <class See>
void for_each_piece(std::u16string_view text, See see) {
    for (std::size_t numbers = 0, end = 0; !text.empty(); numbers -= std::min(numbers, end)) {
        if (numbers == 0) numbers = size_of_address(text);
        const bool word = is_of_a_word(text[0]), address = is_ipv4(text.substr(0, numbers));
        end = address ? numbers : 1;
        while (!address && end != text.size() && end != numbers && is_of_a_word(text[end]) == word)
            ++end;
        see(text.substr(0, end), address        ? Piece::address
                                 : !word        ? Piece::between
                                 : numbers == 0 ? Piece::word
                                                : Piece::number_of_address);
        text.remove_prefix(end);
    }
}

/// "aa", "ab", ...: in this order.
std::u16string letters_of(std::size_t number, std::u16string_view alphabet) {
    std::u16string text;
    for (int digit = 0; digit != 3; ++digit, number /= alphabet.size())
        text.insert(text.begin(), alphabet[number % alphabet.size()]);
    return text;
}

constexpr std::u16string_view plain_letters = u"abcdefghijklmnopqrstuvwxyz";
/// Neither Latin letters for a warning, nor drawn like any.
constexpr std::u16string_view foreign_letters =
    u"\u00E0\u00E2\u00E4\u00E7\u00E8\u00E9\u00EA\u00EB\u00EE\u00EF\u00F1\u00F4"
    u"\u00F6\u00F9\u00FB\u00FC";

std::u16string plain_word(std::size_t number) {
    return u"x" + letters_of(number, plain_letters);
}

bool has_capitals_only(std::u16string_view word) {
    return std::any_of(word.begin(), word.end(), is_letter) &&
           std::none_of(word.begin(), word.end(), [](char16_t c) { return is_letter(c) && !is_capital(c); });
}

/// The spelling of that number, which has not only capitals.
std::u16string spelled(std::u16string word, unsigned number) {
    for (char16_t& c : word) {
        if (number % 2 == 1) c = static_cast<char16_t>(c - u'a' + u'A');
        number /= 2;
    }
    return word;
}

/// What a warning about alphabets looks at, at the end of a word: a letter drawn like a Latin one, right after Latin letters
/// or not, or one of full width.
std::u16string alphabet_mark(std::u16string_view word) {
    bool latin = false, other = false, mixed = false;
    for (const char16_t c : word) {
        if (c >= 0xFF01 && c <= 0xFF5E) return u"\uFF41";
        latin = latin || is_letter(c);
        other = other || looks_latin(c);
        mixed = mixed || (latin && other);
        if (c < 0x80 && !is_letter(c)) latin = other = false;
    }
    if (mixed) return u"\u0430";
    return std::any_of(word.begin(), word.end(), looks_latin) ? u"1\u0430" : u"";
}

/// Addresses that are reserved for documentation.
std::u16string address_of(std::size_t number) {
    constexpr std::string_view networks[] = {"192.0.2.", "198.51.100.", "203.0.113."};
    const std::string text =
        std::string(networks[number / 254 % std::size(networks)]) + std::to_string(number % 254 + 1);
    return {text.begin(), text.end()};
}

} // namespace

Words::Words(std::span<const Tokens> lines) {
    for (const Tokens& line : lines)
        for (const std::u16string& token : line)
            for_each_piece(token, [&](std::u16string_view piece, Piece kind) {
                if (kind == Piece::word || kind == Piece::number_of_address)
                    numbers_.emplace(lower(std::u16string(piece)), 0);
            });
    std::size_t next = 0;
    for (auto& [word, number] : numbers_) {
        while (numbers_.contains(plain_word(next)))
            ++next;
        number = next++;
    }
}

std::u16string Words::replaced(std::u16string_view text, Keep* keep) {
    std::u16string made;
    for_each_piece(text, [&](std::u16string_view piece, Piece kind) {
        const bool stays = kind == Piece::between || (piece.size() == 1 && piece[0] < 0x80) ||
                           (kind == Piece::word && keep(piece));
        made += stays ? std::u16string(piece) : kind == Piece::address ? host(piece) : other(piece);
    });
    return made;
}

std::u16string Words::host(std::u16string_view text) {
    constexpr std::u16string_view own[] = {u"localhost", u"127.0.0.1", u"0.0.0.0", u"[::1]", u"[::]"};
    if (contains(own, lower(std::u16string(text)))) return std::u16string(text);
    if (!is_ipv4(text)) return replaced(text, [](std::u16string_view) { return false; });
    return addresses_.emplace(text, address_of(addresses_.size())).first->second;
}

std::u16string Words::other(std::u16string_view word) {
    const auto [known, added] = others_.emplace(word, u"");
    if (!added) return known->second;
    const std::u16string key = lower(std::u16string(word));
    const std::size_t number = numbers_.at(key);
    std::u16string& made = known->second;
    if (all_digits(word)) {
        const std::string digits = std::to_string(100'000 + number);
        return made = std::u16string(digits.begin(), digits.end());
    }
    const bool plain = std::any_of(word.begin(), word.end(), is_letter) ||
                       std::all_of(word.begin(), word.end(), [](char16_t c) { return c < 0x80; });
    made = plain ? plain_word(number) : letters_of(number, foreign_letters);
    if (has_capitals_only(word))
        std::transform(made.begin(), made.end(), made.begin(),
                       [](char16_t c) { return static_cast<char16_t>(c < 0x80 ? c - u'a' + u'A' : c); });
    else if (plain)
        made = spelled(made, spellings_[key]++);
    if (is_digit(word[0])) made.insert(made.begin(), u'1');
    return made += alphabet_mark(word);
}

} // namespace orvane::redacting
