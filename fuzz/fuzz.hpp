// What the fuzz targets share: bytes as command lines, and promises that end the program when broken.
#pragma once

#include "qel/config/config.hpp"
#include "qel/i18n/convert.hpp"

#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string_view>

namespace qel::config::fuzz {

using namespace std::string_literals;
using i18n::ustring_to_utf8;
using i18n::utf8_to_ustring;
using Tokens = std::deque<std::u16string>;

inline void promise(bool kept, const char* what) {
    if (kept) return;
    std::cerr << "broken promise: " << what << '\n';
    std::abort();
}

/// A byte below 0x80 is one code unit; any other is the high half of one, the byte behind it the low half. So every
/// surrogate can come up, alone or not.
inline std::u16string text_from(std::string_view bytes) {
    std::u16string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        unsigned unit = static_cast<unsigned char>(bytes[i]);
        if (unit >= 0x80 && i + 1 < bytes.size()) unit = unit << 8 | static_cast<unsigned char>(bytes[++i]);
        text += static_cast<char16_t>(unit);
    }
    return text;
}

/// One token a line.
inline Tokens tokens_from(std::string_view bytes) {
    Tokens tokens;
    for (std::size_t end; !bytes.empty(); bytes.remove_prefix(std::min(end + 1, bytes.size()))) {
        end = std::min(bytes.find('\n'), bytes.size());
        tokens.push_back(text_from(bytes.substr(0, end)));
    }
    return tokens;
}

struct Parsed {
    ServerSettings settings;
    boost::system::error_code code;
    std::string text;
};

inline Parsed parse(const Tokens& tokens, ServerSettings before = {}) {
    std::ostringstream out;
    Parsed result{std::move(before), {}, {}};
    result.code = parse_settings(result.settings, tokens, out);
    result.text = out.str();
    return result;
}

/// The record with this one flag, if it is accepted.
inline optional<ServerSettings> accepted(const std::u16string& flag, const std::u16string& value) {
    const Parsed got = parse({option::auto_deploy_root(), u"D", option::https(), u"1", flag, value});
    promise(got.text.empty() == (got.code == error_code::success()),
            "a refusal has a text, and nothing else has one");
    return boost::make_optional(got.text.empty(), got.settings);
}

/// The property that a target states; it breaks a promise when some input does not have it.
void examine(std::string_view bytes);

} // namespace qel::config::fuzz

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    qel::config::fuzz::examine({reinterpret_cast<const char*>(data), size});
    return 0;
}
