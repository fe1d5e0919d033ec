// The formats of command lines, a row each. Reading, converting, help and completions read this table.
#pragma once

#include "formats/format.hpp"

#include <array>

namespace orvane {

using IsWrittenSo = bool(std::string_view text);
using Read = ReadTokens(const LocatedText& text);
using Write = std::string(const TokenGroups& groups);

IsWrittenSo is_nul, is_systemd, is_json, is_sh, is_lines;
Read read_lines, read_nul, read_sh, read_systemd, read_json;
Write as_lines, as_nul, as_sh, as_systemd, as_json, as_powershell;

struct LineFormat {
    std::string_view name;
    IsWrittenSo* is_written_so; ///< tells a file from its content; asked from the first row to the last
    Read* read;                 ///< null: the format is only written
    Write* write;
    bool has_program; ///< the first token is always the program
    std::string_view before_program;
    std::string_view content;
    std::string_view told_by;
    std::string_view refused; ///< what the reader or the writer refuses
};

// clang-format off
inline constexpr LineFormat line_formats[] = {
    {"nul",        is_nul,     read_nul,     as_nul,        false, "",
     "each token followed by a zero byte, as in /proc/PID/cmdline",
     "a zero byte",
     "nothing"},
    {"systemd",    is_systemd, read_systemd, as_systemd,    true,  "ExecStart=",
     "ExecStart= of a unit",
     "a first line [Section] or ExecStart=",
     "specifiers and variables, a second command, escapes that systemd does not know"},
    {"json",       is_json,    read_json,    as_json,       false, "",
     "an array of strings, as in a Dockerfile or in args of Kubernetes",
     "a first character [ or {",
     "anything but one array of strings"},
    {"sh",         is_sh,      read_sh,      as_sh,         false, "",
     "a command line of a POSIX shell, with quotes, comments and continued lines",
     "a blank between words in the first line, or a backslash at its end",
     "everything that the shell would replace, redirect or run as another command"},
    {"lines",      is_lines,   read_lines,   as_lines,      false, "",
     "one token per line, '' for an empty one; blank lines and lines with # are skipped",
     "everything else",
     "tokens that contain a line break, are blank or begin with #, '' itself, and a first one that looks like another format"},
    {"powershell", nullptr,    nullptr,      as_powershell, false, "& ",
     "a command line of PowerShell 7.3 or later",
     "",
     "reading"},
};
// clang-format on

constexpr bool can_be_read(const LineFormat& format) {
    return !format.told_by.empty();
}

/// The names of the formats, those that can be read or all, with | between them.
template <bool Readable>
struct FormatNames {
    static constexpr bool belongs(const LineFormat& format) { return !Readable || can_be_read(format); }
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
ReadTokens read(const LineFormat& format, const std::string& text);

/// The program, unless it is empty, and the tokens. Throws CannotHold.
std::string write(const LineFormat& format, std::u16string program, const std::vector<Tokens>& groups);

} // namespace orvane
