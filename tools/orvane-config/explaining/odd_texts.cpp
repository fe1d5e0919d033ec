// Values whose text shows that something went wrong on the way to the server.
#include "explaining/flag_like.hpp"
#include "explaining/warning_rules.hpp"
#include "text/invisible.hpp"
#include "text/path_anchor.hpp"
#include "text/quoting.hpp"
#include "text/spelling.hpp"
#include "text/windows_name.hpp"

#include <algorithm>

namespace orvane {
namespace {

constexpr std::u16string_view word_characters =
    u"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789";

bool is_letter(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

/// Whether the text contains a name between `open` and `close`.
bool has_name_between(std::u16string_view text, std::u16string_view open, std::u16string_view close) {
    for (std::size_t at = 0; (at = text.find(open, at)) != text.npos;) {
        at += open.size();
        const std::size_t end = text.find_first_not_of(word_characters, at);
        if (end != text.npos && end > at + 1 && is_letter(text[at]) && text.substr(end).starts_with(close))
            return true;
    }
    return false;
}

bool is_enclosed(std::u16string_view text, char16_t open, char16_t close) {
    return text.size() > 1 && text.front() == open && text.back() == close;
}

/// Whether nothing hides in it but what comes along with a copied text: characters without a width, no-break spaces and
/// colours. In other alphabets some of them belong to words; other characters stand for something lost, or turn it round.
bool is_copied_ascii(std::u16string_view text) {
    constexpr std::u16string_view copied = u"\u00A0\u00AD\u200B\u200C\u200D\u200E\u2060\uFEFF";
    for (std::size_t i = 0; i != text.size(); ++i) {
        const bool escape = text[i] == 0x1B && text.substr(i + 1).starts_with(u'[');
        if (escape) i = text.find_first_not_of(u"0123456789;", i + 2);
        if (i >= text.size() || (escape && text[i] != u'm')) return false;
        const bool ascii = text[i] >= u' ' && text[i] <= u'~';
        if (!ascii && !escape && !is_one_of(text[i], copied) && !is_one_of(text[i], quotes)) return false;
    }
    return true;
}

/// Without the pair around it, if these are its only quotes, and what is left of a list after them.
std::u16string without_quotes(std::u16string_view text, std::u16string_view any) {
    text = text.substr(0, text.find_last_not_of(u",;") + 1);
    constexpr std::u16string_view pairs[] = {
        u"\"\"", u"''", u"``", u"\u2018\u2019", u"\u201C\u201D", u"\u201E\u201C", u"\u00AB\u00BB"};
    for (const std::u16string_view pair : pairs)
        if (is_enclosed(text, pair[0], pair[1]) && text.find_first_of(any, 1) == text.size() - 1)
            return std::u16string(text.substr(1, text.size() - 2));
    return {};
}

bool has_drive(std::u16string_view path) {
    return path.size() > 1 && is_letter(path[0]) && path[1] == u':';
}

} // namespace

Suspicion flag_as_value(const GivenValue& value) {
    if (!begins_as_flag(value.text)) return {};
    if (kind_of(value.text) == FlagKind::no_flag && !resembles_a_flag(value.text)) return {};
    return "the value is a flag; is the value of " + shown(value.occurrence[0].text) + " missing?";
}

Suspicion empty_value(const GivenValue& value) {
    return value.text.empty() ? "the value is empty: was a variable not set?" : "";
}

Suspicion lone_mark(const GivenValue& value) {
    constexpr std::u16string_view marks = u"=:-\\^`#$><|&;,.+\u2013\u2014";
    // "." is a directory.
    if (value.text == u"." || value.text == u"..") return {};
    if (value.text.find_first_not_of(marks) != value.text.npos) return {};
    return "this mark itself is the value; is the value that was meant missing?";
}

Suspicion leading_equals(const GivenValue& value) {
    if (!value.text.starts_with(u'=')) return {};
    return {"the = is part of the value; leave it out", value.text.substr(1)};
}

Suspicion end_of_line(const GivenValue& value) {
    constexpr std::u16string_view ends = u"\r\n";
    if (value.text.find_first_of(ends) == value.text.npos) return {};
    std::u16string line = trimmed(value.text, ends);
    // In the middle, something may have been there instead.
    if (line.find_first_of(ends) != line.npos) line.clear();
    if (value.text.find(u'\r') == value.text.npos) return {"the value contains a line feed", line};
    return {"the value contains a carriage return; does it come from a file with Windows line endings?",
            line};
}

Suspicion invisible(const GivenValue& value) {
    std::u16string text = value.text;
    std::erase(text, u'\t');
    if (!has_invisible(text)) return {};
    constexpr auto said = "the value contains an invisible character";
    return is_copied_ascii(value.text) ? Suspicion(said, trimmed(visible(value.text), u" ")) : said;
}

Suspicion blank_at_an_end(const GivenValue& value) {
    if (value.has(Form::clients)) return {}; // the server trims these
    // At spaces it splits origins.
    const std::u16string_view any = blanks.substr(value.has(Form::origins) ? 1 : 0);
    const bool odd = is_one_of(value.text.front(), any) || is_one_of(value.text.back(), any);
    if (!odd) return {};
    return {"the value begins or ends with a space", trimmed(value.text, blanks)};
}

Suspicion quotes_around(const GivenValue& value) {
    constexpr std::u16string_view any = u"\"'`\u2018\u2019\u201C\u201D\u201E\u00AB\u00BB";
    const bool first = is_one_of(value.text.front(), any), last = is_one_of(value.text.back(), any);
    // Both parts of an entry, and words of a command, may have quotes.
    const bool quotes_inside = value.holds(Holds::command) || value.has(Form::user_data);
    const bool odd = quotes_inside
                         ? first && last && value.text.find_first_of(any, 1) == value.text.size() - 1
                         : first || last;
    if (!odd) return {};
    std::u16string meant = without_quotes(value.text, any);
    // A command may need them.
    if (value.holds(Holds::command) && meant.find(u' ') != meant.npos) meant.clear();
    return {"the quotes are part of the value", meant};
}

Suspicion separator_at_the_end(const GivenValue& value) {
    if (value.has(Form::origins) || (value.holds(Holds::command) && value.text.ends_with(u';'))) return {};
    const char16_t mark = value.text.back();
    if (mark != u',' && mark != u';') return {};
    std::u16string meant = value.text.substr(0, value.text.find_last_not_of(mark) + 1);
    // Others like it may mean a list, and an entry may be any text.
    const bool listed = meant.find(mark) != meant.npos && !value.has(Form::clients);
    if (listed || value.has(Form::user_data)) meant.clear();
    return {std::string("the ") + (mark == u',' ? "comma" : "semicolon") + " at the end is part of the value",
            meant};
}

Suspicion look_alike(const GivenValue& value) {
    const auto is_ascii = [](char16_t c) { return c < 0x80; };
    if (std::all_of(value.text.begin(), value.text.end(), is_ascii)) return {};
    bool latin = false, other = false;
    for (const char16_t c : value.text) {
        if (c >= 0xFF01 && c <= 0xFF5E) return "the value contains a full-width character";
        latin = latin || is_letter(c);
        other = other || looks_latin(c);
        if (latin && other) return "a letter looks Latin, but is from another alphabet";
        if (c < 0x80 && !is_letter(c)) latin = other = false;
    }
    return {};
}

Suspicion home(const GivenValue& value) {
    return value.text.starts_with(u'~') && !value.holds(Holds::command)
               ? "only a shell expands ~; write the whole path"
               : "";
}

Suspicion variable(const GivenValue& value) {
    // A shell may run the command.
    if (value.holds(Holds::command)) return {};
    const std::u16string& text = value.text;
    bool odd = has_name_between(text, u"%", u"%");
    for (std::size_t at = 0; !odd && (at = text.find(u'$', at)) != text.npos; ++at) {
        const char16_t next = at + 1 < text.size() ? text[at + 1] : u' ';
        const bool begins_a_word = at == 0 || is_one_of(text[at - 1], u"/:=@,");
        odd = next == u'{' || next == u'(' ||
              (begins_a_word && is_one_of(next, word_characters) && (next < u'0' || next > u'9'));
    }
    return odd ? "the variable was not expanded" : "";
}

Suspicion template_mark(const GivenValue& value) {
    const std::u16string& text = value.text;
    const bool enclosed = is_enclosed(text, u'<', u'>') || is_enclosed(text, u'[', u']') ||
                          is_enclosed(text, u'{', u'}') || is_enclosed(text, u'(', u')');
    const bool inside =
        !value.holds(Holds::command) && (text.find(u"{{") != text.npos || has_name_between(text, u"<", u">"));
    return enclosed || inside ? "the brackets are part of the value; is this a placeholder?" : "";
}

Suspicion flag_inside(const GivenValue& value) {
    if (value.holds(Holds::command)) return {};
    for (std::size_t at = 0; (at = value.text.find(u" --", at)) != value.text.npos;) {
        ++at;
        const std::u16string word = value.text.substr(at, value.text.find(u' ', at) - at);
        if (reference_of(word.substr(0, word.find(u'='))) != nullptr)
            return "it contains the flag " + shown(word) + ", which has no effect there";
    }
    return {};
}

Suspicion foreign_path(const GivenValue& value) {
    if (!value.holds(Holds::path)) return {};
    const std::u16string& path = value.text;
    if (!backslash_separates()) {
        const bool odd = has_drive(path) || path.find(u'\\') != path.npos;
        return odd ? "this looks like a Windows path; \\ does not separate directories here" : "";
    }
    return anchor_of(path) == PathAnchor::root
               ? "this path has no drive letter; it is on the server's current drive"
               : why_no_windows_name(path);
}

Suspicion relative_directory(const GivenValue& value) {
    if (!value.has(Form::directory)) return {};
    const PathAnchor anchor = anchor_of(value.text);
    if (anchor == PathAnchor::drive)
        return "the directory is relative to the current one of the server on that drive";
    return anchor == PathAnchor::none ? "the directory is relative to where the server is started" : "";
}

} // namespace orvane
