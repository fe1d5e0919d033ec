// A pair of user data that is accepted can be quoted, and read back.
#include "fuzz.hpp"

void qel::config::fuzz::examine(std::string_view bytes) {
    const auto record = accepted(option::user_data(), text_from(bytes));
    if (!record) return;
    const auto quoted = [](const std::u16string& text) {
        std::u16string result = u"\"";
        for (const char16_t unit : text) {
            if (unit == u'"' || unit == u'\\') result += u'\\';
            result += unit;
        }
        return result + u'"';
    };
    const auto& [key, value] = record->user_data().at(0);
    promise(!value.empty(), "a value is never empty");
    promise(accepted(option::user_data(), quoted(key) + u' ' + quoted(value)) == record,
            "a quoted pair is read back");
}
