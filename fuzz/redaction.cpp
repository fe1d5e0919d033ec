// No marked word comes out of a redacted line, wherever it was, nor out of the name of a file, nor out of the reason why a line
// cannot be redacted.
#include "fuzz.hpp"

#include "redacting/redactor.hpp"

/// Of letters, of more digits than any number has, and of addresses: a byte of the input stands for each. No part of them may
/// come out.
static const std::u16string marks[] = {u"zqvjx", u"739184650273645918273", u"10.73.91.84", u"fd73:91e4::84c6",
                                       u"web.zqvjx.org"};
static const std::u16string parts[] = {u"zqvj", u"qvjx", u"7391",   u"1846",    u"6502", u"7364",
                                       u"5918", u"8273", u".73.91", u"73:91e4", u"84c6"};

static std::u16string marked(const std::u16string& text) {
    std::u16string made;
    for (const char16_t c : text)
        made += c > 0 && c <= std::size(marks) ? marks[c - 1] : std::u16string(1, c);
    return made;
}

static void promise_no_mark(std::u16string text) {
    for (char16_t& c : text)
        if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c + (u'a' - u'A'));
    for (const std::u16string& part : parts)
        promise(text.find(part) == text.npos, "no marked word comes out");
}

void examine(std::string_view bytes) {
    Tokens line = tokens_from(bytes);
    for (std::u16string& token : line)
        token = marked(token);
    orvane::redacting::Redactor redactor;
    promise_no_mark(utf8_to_ustring(redactor.file(qel::i18n::ustring_to_utf8(line[0]))));
    try {
        const auto made = redactor.lines({line});
        promise(made[0].size() == line.size(), "each token has a redacted one");
        for (const std::u16string& token : made[0])
            promise_no_mark(token);
    } catch (const std::runtime_error& refusal) {
        promise(std::string_view(refusal.what()).starts_with("cannot redact "),
                "a refusal says that it is one");
        promise_no_mark(utf8_to_ustring(refusal.what()));
    }
}
