// The words of a unit's command line.
#include "formats/unit_file.hpp"

#include "qel/i18n/convert.hpp"

#include <charconv>

namespace orvane {
namespace {

/// What a letter after a backslash stands for.
struct Escape {
    char letter, meaning;
};
constexpr Escape unit_escapes[] = {{'a', '\a'},  {'b', '\b'}, {'f', '\f'}, {'n', '\n'},
                                   {'r', '\r'},  {'t', '\t'}, {'v', '\v'}, {'s', ' '},
                                   {'\\', '\\'}, {'"', '"'},  {'\'', '\''}};

/// A number after a backslash.
struct Coded {
    std::string_view prefix;
    std::size_t digits;
    int base;
    bool is_byte;
};
constexpr Coded coded[] = {{"x", 2, 16, true}, {"u", 4, 16, false}, {"U", 8, 16, false}, {"", 3, 8, true}};

std::string utf8_of(std::uint32_t character) {
    std::u16string units;
    if (character >= 0x10000) {
        units += static_cast<char16_t>(0xD7C0 + (character >> 10));
        units += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
    } else {
        units += static_cast<char16_t>(character);
    }
    return qel::i18n::ustring_to_utf8(units);
}

bool is_character(std::uint32_t number) {
    return number <= 0x10FFFF && (number & 0xFFFFF800U) != 0xD800;
}

/// Splits a command line into words as systemd does.
class Words {
public:
    explicit Words(const LocatedText& text) : walk_(text) {}

    std::vector<UnitWord> all() {
        for (walk_.skip_any_of(unit_blanks); !walk_.done(); walk_.skip_any_of(unit_blanks)) {
            if (is_alone(";")) walk_.refuse("a second command; only one is read");
            LocatedText& word = words_.emplace_back(UnitWord{{}, walk_.spot()}).text;
            if (is_alone("\\;"))
                walk_.next(), word.append(walk_.next(), walk_.spot());
            else
                read(word);
        }
        return std::move(words_);
    }

private:
    bool is_alone(std::string_view what) const {
        return walk_.comes(what) && (walk_.peek(what.size()) == '\0' || is_white(walk_.peek(what.size())));
    }

    static bool is_octal(char c) { return c >= '0' && c <= '7'; }
    static bool is_white(char c) { return unit_blanks.find(c) != unit_blanks.npos; }

    void read(LocatedText& word) {
        while (!walk_.done() && !is_white(walk_.peek())) {
            if (walk_.peek() != '"' && walk_.peek() != '\'') {
                character(word);
                continue;
            }
            const Walk begin = walk_;
            for (const char quote = walk_.next(); walk_.peek() != quote;) {
                if (walk_.done()) begin.refuse("this quote is not closed");
                character(word);
            }
            walk_.next();
        }
    }

    void character(LocatedText& word) {
        const Spot spot = walk_.spot();
        if (walk_.peek() != '\\') return word.append(walk_.next(), spot);
        const Walk begin = walk_;
        walk_.next();
        for (const Escape& escape : unit_escapes)
            if (walk_.peek() == escape.letter) {
                walk_.next();
                return word.append(escape.meaning, spot);
            }
        for (const Coded& code : coded)
            if (code.prefix.empty() ? is_octal(walk_.peek()) : walk_.skip(code.prefix))
                return append_coded(code, begin, word);
        begin.refuse("systemd does not know this escape; for a backslash write two");
    }

    void append_coded(const Coded& code, const Walk& begin, LocatedText& word) {
        std::string digits;
        while (digits.size() != code.digits && !walk_.done())
            digits += walk_.next();
        std::uint32_t number = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), number, code.base);
        const bool whole = digits.size() == code.digits && end == digits.data() + digits.size() &&
                           error == std::errc() && number != 0;
        if (!whole || (code.is_byte ? number > 0xFF : !is_character(number)))
            begin.refuse("systemd does not accept this number as a character");
        for (const char byte : code.is_byte ? std::string(1, static_cast<char>(number)) : utf8_of(number))
            word.append(byte, begin.spot());
    }

    Walk walk_;
    std::vector<UnitWord> words_{};
};

} // namespace

std::vector<UnitWord> unit_words(const LocatedText& text) {
    return Words(text).all();
}

} // namespace orvane
