// Shared by the fuzz targets: turning bytes into command lines, and promises that end the program if they are broken.
#pragma once

#include "../tests/support.hpp"

/// Checks the property that a target states. An input without it breaks a promise.
void examine(std::string_view bytes);

using namespace qel::config;
using namespace qel::config::test;
using qel::i18n::utf8_to_ustring;

inline void promise(bool kept, const char* what) {
    if (!kept) throw std::logic_error("broken promise: "s + what);
}

/// A byte below 0x80 is one code unit; any other byte is the high half of one, and the byte after it is the low half.
/// So every surrogate can occur, alone or in a pair.
inline std::u16string text_from(std::string_view bytes) {
    std::u16string text;
    for (std::size_t i = 0; i != bytes.size(); ++i) {
        unsigned unit = static_cast<unsigned char>(bytes[i]);
        if (unit >= 0x80 && i + 1 != bytes.size()) unit = unit << 8 | static_cast<unsigned char>(bytes[++i]);
        text += static_cast<char16_t>(unit);
    }
    return text;
}

/// One token per line.
inline Tokens tokens_from(std::string_view bytes) {
    Tokens tokens;
    for (Lines lines; const std::string& line : boost::split(lines, bytes, boost::is_any_of("\n")))
        tokens.push_back(text_from(line));
    return tokens;
}

/// The record with this one flag, if it is accepted.
inline optional<S> accepted(const std::u16string& flag, const std::u16string& value) {
    const Parsed got = parse_with_root({option::https(), u"1", flag, value});
    promise(got.text.empty() == (got.code == error_code::success()),
            "a refusal, and nothing else, has a text");
    return boost::make_optional(got.text.empty(), got.settings);
}

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
    return examine({data, size}), 0;
}
