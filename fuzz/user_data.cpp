// An accepted pair of user data can be quoted and read back.
#include "fuzz.hpp"

void examine(std::string_view bytes) {
    const auto record = accepted(option::user_data(), text_from(bytes));
    if (!record) return;
    const auto quoted = [](std::u16string text) {
        for (std::size_t at = 0; (at = text.find_first_of(u"\"\\", at)) != text.npos; at += 2)
            text.insert(at, 1, u'\\');
        return u'"' + text + u'"';
    };
    const auto& [key, value] = record->user_data().at(0);
    promise(!value.empty(), "a value is never empty");
    promise(accepted(option::user_data(), quoted(key) + u' ' + quoted(value)) == record,
            "a quoted pair is read back");
}
