// Which words are public.
#include "redacting/words.hpp"

#include "explaining/rules.hpp"
#include "own/option_table.hpp"
#include "text/lists.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <string>
#include <unordered_set>

namespace orvane::redacting {
namespace {

using qel::i18n::utf8_to_ustring;

class WordList {
public:
    explicit WordList(std::string_view text) { add(text); }

    void add(std::string_view text) {
        for (std::u16string& word : split_words(utf8_to_ustring(std::string(text)), u" -_|<>[]/;=,:@."))
            words_.insert(lower(std::move(word)));
    }

    bool has(std::u16string_view word) const {
        constexpr std::size_t longest = 40;
        return word.size() < longest && words_.contains(lower(std::u16string(word)));
    }

private:
    std::unordered_set<std::u16string> words_{};
};

WordList words_of_the_tables() {
    WordList words(
        "on off yes no true false none all exe sudo doas env exec nohup nice time run start not disable "
        "disabled "
        "enable info warn warnings err fatal critical crit alert emerg panic severe notice verbose txt "
        "required "
        "mutual peer "
        "purge drop discard delete remove archive save store null http https tcp redis localhost orvane");
    for (const Reference& one : references()) {
        words.add(one.flag);
        words.add(one.value);
        for (const Synonym& synonym : synonyms_of(one))
            words.add(synonym.name);
    }
    for (const Verb& verb : verbs)
        words.add(verb.name);
    for (const OtherWords& row : words_of_others)
        words.add(row.words);
    for (const OwnOption& option : own_options)
        words.add(option.name);
    return words;
}

bool is_known(std::u16string_view word) {
    static const WordList words = words_of_the_tables();
    return words.has(word);
}

bool is_digit(char16_t c) {
    return (c >= u'0' && c <= u'9') || (c >= 0xFF10 && c <= 0xFF19);
}

/// "64", "1h30m", "PT30S", with no more digits than any flag takes.
bool is_number(std::u16string_view word) {
    // Of a duration's ISO form, weeks, the largest sizes, and powers of ten.
    constexpr std::u16string_view more = u" p pt t w pb pib e eb eib ";
    constexpr std::ptrdiff_t most_digits = 20;
    while (!word.empty()) {
        const auto number = std::ranges::find_if(word, is_digit);
        const auto end = std::find_if_not(number, word.end(), is_digit);
        const std::u16string unit = lower(std::u16string(word.begin(), number));
        const bool known = unit.empty() || is_unit(unit) || more.find(u" " + unit + u" ") != more.npos;
        if (!known || end - number > most_digits) return false;
        word.remove_prefix(static_cast<std::size_t>(end - word.begin()));
    }
    return true;
}

/// A misspelt keyword, alone: beside others, or with letters of another alphabet, a word that is like one may be private.
bool is_slip(const Word& word) {
    constexpr std::size_t most_marks = 8;
    const auto letters = static_cast<std::size_t>(std::ranges::count_if(word.word(), is_of_a_word));
    if (word.flag == nullptr || !word.flag->holds(Holds::words) || word.text.size() > letters + most_marks)
        return false;
    const bool is_alone =
        std::ranges::count_if(word.text, is_of_a_word) == static_cast<std::ptrdiff_t>(letters);
    const bool is_latin =
        std::ranges::all_of(word.word(), [](char16_t c) { return c < 0x80 || looks_latin(c); });
    return is_alone && is_latin &&
           !most_like(lower(std::u16string(word.word())), keywords(*word.flag)).empty();
}

bool is_port(std::u16string_view text) {
    return all_digits(text) && text.size() <= 5;
}

bool is_slash(char16_t c) {
    return is_one_of(c, slashes);
}

} // namespace

bool nothing(const Word&) {
    return false;
}

bool known_words(const Word& word) {
    const std::u16string_view text = word.word();
    if (text.size() == 1) return text == word.text && is_one_of(text[0], u"01");
    return names(word) || is_slip(word);
}

bool names(const Word& word) {
    return is_known(word.word()) && !all_digits(word.word());
}

bool quantity(const Word& word) {
    return known_words(word);
}

bool tls_names(const Word& word) {
    static const WordList list(
        "tls tlsv1 sslv2 sslv3 dtlsv1 all default high medium low null anull enull md5 rc4 des 3des aes "
        "aes128 "
        "aes256 cbc gcm ccm 128 256 sha sha256 sha384 rsa ecdsa ecdhe ecdh dhe psk chacha20 poly1305 "
        "prime256v1 secp384r1 secp521r1 x25519");
    const std::u16string_view text = word.word();
    const bool version =
        text.size() > 2 && text[text.size() - 2] == u'.' && text.back() >= u'1' && text.back() <= u'3';
    return list.has(version ? text.substr(0, text.size() - 2) : text);
}

bool first_word(const Word& word) {
    const std::size_t blank = word.text.find(u' ');
    return known_words(word) && (word.end <= blank || (word.text[blank - 1] == u';' &&
                                                       word.end <= word.text.find(u' ', blank + 1)));
}

bool path(const Word& word) {
    static const WordList directories(
        "bin boot cache data dev etc home lib lib64 local log media mnt opt orvane proc run sbin share "
        "spool srv ssl sys tmp usr users var");
    static const WordList kinds(
        "cer cert cfg conf crl crt csr exe ini jar js json key log p12 pem pfx pid ps1 py service sh sock "
        "tar toml txt war xml yaml yml zip");
    constexpr std::u16string_view own[] = {u"zep", u"deployed"}; // the directory .zep_deployed
    const std::u16string_view text = word.word();
    const bool drive =
        word.end == 1 && word.after() == u':' && (word.text.size() == 2 || is_slash(word.text[2]));
    const bool directory =
        word.near_root && is_slash(word.before()) && (word.after() == 0 || is_slash(word.after()));
    const bool kind =
        word.after() == 0 && word.before() == u'.' && word.begin > 1 && !is_slash(word.text[word.begin - 2]);
    return drive || (directory && directories.has(text)) || (kind && kinds.has(text)) || contains(own, text);
}

bool hosts(const Word& word) {
    constexpr std::u16string_view known[] = {u"http",  u"https",     u"tcp", u"unix",
                                             u"redis", u"localhost", u"null"};
    const auto ports = split<char16_t>(word.word(), u"-"); // one, or a range
    if (std::ranges::all_of(ports, is_port))
        return !word.in_path || (word.before() == u':' && word.after() == 0);
    return !word.in_path && contains(known, lower(std::u16string(word.word())));
}

bool is_quantity(std::u16string_view text) {
    int dots = 0; // three are in an address, or nearly one
    for (Word word{text}; word.next();) {
        dots = word.word() == u"." ? dots + 1 : all_digits(word.word()) ? dots : 0;
        const bool is_public =
            word.kind == Kind::mark || (word.kind == Kind::word && (is_number(word.word()) || names(word)));
        if (!is_public || dots == 3) return false;
    }
    return true;
}

} // namespace orvane::redacting
