// What is written in a format is read back as the same tokens, also if nobody says which format it is. Places ascend.
#include "fuzz.hpp"

#include "formats/format_table.hpp"

#include <boost/json/src.hpp>

using namespace orvane;

static std::deque<std::u16string> texts_of(const ReadTokens& tokens, bool has_program) {
    std::deque<std::u16string> texts;
    for (const ReadToken& token : tokens)
        texts.push_back(utf8_to_ustring(token.text));
    if (has_program) texts.pop_front();
    return texts;
}

/// Only lines, and what cmd.exe reads, cannot hold every token that is well-formed.
static void write_and_read(const LineFormat& format, const std::deque<std::u16string>& tokens,
                           bool well_formed) {
    if (!format.is_written) return;
    try {
        const std::string text = write(format, u"", {tokens});
        promise(well_formed, "half a surrogate pair is refused");
        if (!format.is_read) return;
        promise(texts_of(read(format, text), format.has_program) == tokens, "what was written is read back");
        const std::string content = decoded(text);
        promise(texts_of(read(format_of(content), content), format.has_program) == tokens,
                "the format is told from the content");
    } catch (const CannotHold&) {
        promise(!well_formed || format.name == "lines" || format.name == "cmd",
                "the format holds every token");
    } catch (const NotUnderstood& fault) {
        promise(false, fault.what());
    }
}

static void read_and_write(const LineFormat& format, const std::string& text) {
    try {
        const ReadTokens tokens = read(format, text);
        for (std::size_t i = 1; i < tokens.size(); ++i) {
            const Spot before = tokens[i - 1].spot, spot = tokens[i].spot;
            promise(std::pair(before.line, before.column) <= std::pair(spot.line, spot.column),
                    "places ascend");
        }
        write_and_read(format, texts_of(tokens, format.has_program), true);
    } catch (const NotUnderstood& fault) {
        promise(fault.spot.line != 0 && fault.what() != ""s, "a refusal has a place and a reason");
    }
}

void examine(std::string_view bytes) {
    std::deque<std::u16string> tokens = tokens_from(bytes);
    bool well_formed = true;
    for (std::u16string& token : tokens) {
        std::erase(token, u'\0'); // which no argument can contain
        well_formed = well_formed && utf8_to_ustring(qel::i18n::ustring_to_utf8(token)) == token;
    }
    for (const LineFormat& format : line_formats) {
        write_and_read(format, tokens, well_formed);
        if (format.is_read) read_and_write(format, decoded(std::string(bytes)));
    }
}
