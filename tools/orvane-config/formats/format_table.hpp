// The formats of command lines, a row each. Reading, converting, help and completions read this table.
#pragma once

#include "formats/format.hpp"

#include <array>

namespace orvane {

using IsWrittenSo = bool(std::string_view text);
using Read = ReadTokens(const LocatedText& text);
using Write = std::string(const TokenGroups& groups);

IsWrittenSo is_nul, is_systemd, is_json, is_yaml, is_dockerfile, is_env, is_settings, is_win, is_flags,
    is_lines;
Read read_flags, read_lines, read_nul, read_sh, read_systemd, read_json, read_yaml, read_dockerfile, read_env,
    read_settings, read_win;
Write as_flags, as_lines, as_nul, as_sh, as_systemd, as_json, as_powershell, as_cmd;

struct LineFormat {
    std::string_view name;
    IsWrittenSo*
        is_written_so; ///< tells a file from its content; asked from the first row to the last; null: it must be named
    Read* read;
    Write* write;
    // With the sanitizer of undefined behaviour, g++ cannot compare a function's address in a constant.
    bool is_read;     ///< else the format is only written, and `read` is null
    bool is_written;  ///< else it is only read, and `write` is null
    bool has_program; ///< the first token is always the program
    bool has_bytes;   ///< its reader tells which bytes a token is, so that these can be replaced
    std::string_view before_program;
};

// clang-format off
inline constexpr LineFormat line_formats[] = {
    {"nul",        is_nul,        read_nul,        as_nul,        true,  true,  false, false, ""},
    {"systemd",    is_systemd,    read_systemd,    as_systemd,    true,  true,  true,  false, "ExecStart="},
    {"json",       is_json,       read_json,       as_json,       true,  true,  false, false, ""},
    {"yaml",       is_yaml,       read_yaml,       nullptr,       true,  false, false, false, ""},
    {"dockerfile", is_dockerfile, read_dockerfile, nullptr,       true,  false, false, false, ""},
    {"env",        is_env,        read_env,        nullptr,       true,  false, false, false, ""},
    {"settings",   is_settings,   read_settings,   nullptr,       true,  false, false, false, ""},
    {"win",        is_win,        read_win,        nullptr,       true,  false, false, false, ""},
    {"flags",      is_flags,      read_flags,      as_flags,      true,  true,  false, true,  ""},
    {"lines",      is_lines,      read_lines,      as_lines,      true,  true,  false, true,  ""},
    {"sh",         nullptr,       read_sh,         as_sh,         true,  true,  false, true,  ""},
    {"powershell", nullptr,       nullptr,         as_powershell, false, true,  false, false, "& "},
    {"cmd",        nullptr,       nullptr,         as_cmd,        false, true,  false, false, ""},
};
// clang-format on

/// What people call a format, and the one that is nearest to it.
struct OtherFormat {
    std::string_view words, meant;
};

// clang-format off
inline constexpr OtherFormat formats_of_others[] = {
    {"docker container",                                      "dockerfile"},
    {"compose docker-compose kubernetes k8s pod yml",         "yaml"},
    {"docker dockerfile container compose docker-compose kubernetes k8s pod yaml yml", "json"}, // which is not written as these
    {"unit service",                                          "systemd"},
    {"ps1 pwsh powershell bat batch cmd windows",             "win"}, // which is only read
    {"ps1 pwsh",                                              "powershell"},
    {"bat batch windows",                                     "cmd"},
    {"shell bash zsh dash posix script ps1 pwsh powershell bat cmd", "sh"},
    {"environment dotenv",                                    "env"},
    {"ini conf cfg properties toml",                          "settings"},
    {"txt text file env dotenv ini conf environment settings", "flags"},
    {"args argv",                                             "lines"},
};
// clang-format on

/// The names of the formats that can be read, or of those that can be written, with | between them.
template <bool Readable>
struct FormatNames {
    static constexpr bool belongs(const LineFormat& format) {
        return Readable ? format.is_read : format.is_written;
    }
    static constexpr std::size_t size = [] {
        std::size_t sum = 0;
        for (const LineFormat& format : line_formats)
            sum += belongs(format) ? format.name.size() + 1 : 0;
        return sum - 1;
    }();
    static constexpr std::array<char, size> letters = [] {
        std::array<char, size> text{};
        std::size_t at = 0;
        for (const LineFormat& format : line_formats) {
            if (!belongs(format)) continue;
            if (at != 0) text[at++] = '|';
            for (const char c : format.name)
                text[at++] = c;
        }
        return text;
    }();
    static constexpr std::string_view text{letters.data(), letters.size()};
};

/// The row of a name that is in the table.
const LineFormat& format_named(std::string_view name);

/// The format that a text is written in.
const LineFormat& format_of(std::string_view text);

/// The tokens of a text. Throws NotUnderstood.
ReadTokens read(const LineFormat& format, const LocatedText& text);
inline ReadTokens read(const LineFormat& format, const std::string& text) {
    return read(format, located(text));
}

/// The program, unless it is empty, and the tokens. Throws CannotHold.
std::string write(const LineFormat& format, std::u16string program, const std::vector<Tokens>& groups);

} // namespace orvane
