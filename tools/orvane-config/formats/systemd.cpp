// The format systemd: ExecStart= of a unit.
#include "formats/format_table.hpp"
#include "formats/unit_file.hpp"

#include "qel/i18n/convert.hpp"

#include <cctype>
#include <charconv>

namespace orvane {
namespace {

constexpr std::string_view plain_in_units =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_./:,=@+";

/// They say how the program is started, such as that its failure is ignored.
constexpr std::string_view marks_before_program = "-@:+!|";

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

    std::vector<LocatedText> all() {
        for (walk_.skip_any_of(unit_blanks); !walk_.done(); walk_.skip_any_of(unit_blanks)) {
            if (is_alone(";")) walk_.refuse("a second command; only one is read");
            LocatedText& word = words_.emplace_back();
            starts_.push_back(walk_.spot());
            if (is_alone("\\;"))
                walk_.next(), word.append(walk_.next(), walk_.spot());
            else
                read(word);
        }
        return std::move(words_);
    }

    const std::vector<Spot>& starts() const { return starts_; }

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
    std::vector<LocatedText> words_{};
    std::vector<Spot> starts_{};
};

/// The word with every doubled mark as one. What a single one stands for is known to systemd only when it runs.
LocatedText undoubled(const LocatedText& word, std::string_view mark, const std::string& why) {
    LocatedText result;
    for (Walk walk(word); !walk.done();) {
        const Spot spot = walk.spot();
        if (walk.comes(mark) && walk.peek(1) != mark[0]) walk.refuse(why);
        if (walk.comes(mark)) walk.next();
        result.append(walk.next(), spot);
    }
    return result;
}

/// Takes the marks before the program off it.
std::string marks_of(LocatedText& program) {
    const std::size_t size =
        std::min(program.bytes.find_first_not_of(marks_before_program), program.bytes.size());
    std::string marks = program.bytes.substr(0, size);
    LocatedText rest;
    rest.append(program, size, program.bytes.size());
    program = std::move(rest);
    return marks;
}

bool is_noncharacter(std::string_view left) {
    // U+FDD0 to U+FDEF, and the last two of each plane; systemd refuses lines with them.
    const auto byte = [&](std::size_t i) {
        return i < left.size() ? static_cast<unsigned char>(left[i]) : 0;
    };
    if (byte(0) == 0xEF && byte(1) == 0xB7) return byte(2) >= 0x90 && byte(2) <= 0xAF;
    const std::size_t last = byte(0) >= 0xF0 ? 3 : 2;
    return byte(0) >= 0xEF && byte(last) >= 0xBE && byte(last - 1) == 0xBF &&
           (last == 2 || (byte(1) & 0x0F) == 0x0F);
}

std::string quoted_for_systemd(const std::string& token) {
    std::string text;
    std::size_t to_escape = 0; // so many bytes of a character that has to be coded
    for (std::size_t i = 0; i != token.size(); ++i) {
        const auto byte = static_cast<unsigned char>(token[i]);
        if (is_noncharacter(std::string_view(token).substr(i))) to_escape = byte >= 0xF0 ? 4 : 3;
        if (to_escape != 0 || byte < 0x20 || byte == 0x7F) {
            constexpr std::string_view digits = "0123456789abcdef";
            text += {'\\', 'x', digits[byte >> 4U], digits[byte & 15U]};
            to_escape -= to_escape != 0 ? 1 : 0;
            continue;
        }
        if (byte == '"' || byte == '\\') text += '\\';
        if (byte == '%' || byte == '$') text += token[i];
        text += token[i];
    }
    const bool is_plain = !text.empty() && text.find_first_not_of(plain_in_units) == text.npos;
    return is_plain ? text : '"' + text + '"';
}

} // namespace

bool is_systemd(std::string_view text) {
    const std::string_view line = first_line_of(text);
    const bool section = line.size() > 2 && line.ends_with(']') && line.starts_with('[') &&
                         std::isalpha(static_cast<unsigned char>(line[1])) != 0;
    constexpr std::string_view key = "ExecStart";
    return section || (line.starts_with(key) &&
                       line.substr(std::min(line.find_first_not_of(unit_blanks, key.size()), line.size()))
                           .starts_with('='));
}

ReadTokens read_systemd(const LocatedText& text) {
    const LocatedText command = exec_start_of(text);
    Words reader(command);
    std::vector<LocatedText> words = reader.all();
    const std::string marks = marks_of(words.front());
    ReadTokens tokens;
    for (std::size_t i = 0; i != words.size(); ++i) {
        // The second word is then what the program is told it is called.
        if (i == 1 && marks.find('@') != marks.npos) continue;
        LocatedText word =
            undoubled(words[i], "%", "systemd would replace this; write the value, or %% for a %");
        if (i != 0 && marks.find(':') == marks.npos)
            word = undoubled(word, "$", "systemd would replace this; write the value, or $$ for a $");
        tokens.push_back({word.bytes, reader.starts()[i]});
    }
    return tokens;
}

std::string as_systemd(const TokenGroups& groups) {
    if (groups.front().front().find_first_of("$%") != std::string::npos ||
        marks_before_program.find(groups.front().front().front()) != marks_before_program.npos)
        throw CannotHold("the program's path has a $ or % in it, or begins with one of " +
                         std::string(marks_before_program) + ": choose another path for a unit");
    return joined(groups, quoted_for_systemd, " \\\n    ") + '\n';
}

} // namespace orvane
