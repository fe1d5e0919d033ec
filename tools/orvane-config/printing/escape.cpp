// Texts from outside, shown on one line.
#include "printing/escape.hpp"

std::string orvane::escape(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string shown;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7f) {
            shown += "\\u00";
            shown += digits[byte >> 4];
            shown += digits[byte & 15];
        } else {
            shown += c;
        }
    }
    return shown;
}
