// Conversions accept any text. They keep its well-formed parts unchanged, whatever is next to them.
#include "fuzz.hpp"

void examine(std::string_view bytes) {
    const std::u16string units = text_from(bytes), wide = utf8_to_ustring(bytes);
    const std::string narrow = ustring_to_utf8(units);
    const auto whole = [](const std::u16string& text) { return text.find(u'\uFFFD') == text.npos; };
    promise(!whole(wide) || ustring_to_utf8(wide) == bytes, "well-formed UTF-8 comes back");
    promise(!whole(utf8_to_ustring(narrow)) || utf8_to_ustring(narrow) == units,
            "well-formed UTF-16 comes back");
    promise(utf8_to_ustring(ustring_to_utf8(wide)) == wide, "what comes out of UTF-8 is well-formed");
    promise(ustring_to_utf8(utf8_to_ustring(narrow)) == narrow, "what comes out of UTF-16 is well-formed");
    const std::u16string front = u"\u00e4\u20ac", back = u"\U0001F600b";
    const std::string utf8_front = "\u00e4\u20ac", utf8_back = "\U0001F600b";
    promise(ustring_to_utf8(front + units + back) == utf8_front + narrow + utf8_back,
            "UTF-16 neighbours stay");
    promise(utf8_to_ustring(utf8_front + std::string(bytes) + utf8_back) == front + wide + back,
            "UTF-8 neighbours stay");
    promise(qel::i18n::ascii_to_ustring(bytes).size() == bytes.size(), "a byte is a unit");
}
