// The format win, read: a command of PowerShell, of cmd.exe or of a batch file, where one meaning is certain.
#include "formats/format_table.hpp"
#include "text/lists.hpp"

#include <algorithm>
#include <cctype>

namespace orvane {
namespace {

std::string lowered(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return result;
}

bool goes_on_after(std::string_view line) {
    return line.ends_with(" ^") || line.ends_with(" `");
}

/// A comment, or what does not change the command.
bool is_no_command(std::string_view text) {
    constexpr std::string_view lines[] = {"@echo off", "setlocal", "endlocal", "pause",
                                          "exit /b",   "@rem",     "rem"};
    const std::string line = lowered(text);
    return contains(lines, line) || line.starts_with("rem ") || line.starts_with("@rem ") ||
           line.starts_with('#') || line.starts_with("::") || line.starts_with("exit /b ");
}

/// The one command, its lines put together.
LocatedText command_in(const LocatedText& text) {
    LocatedText command;
    bool goes_on = false;
    for_each_line(text.bytes, [&](std::string_view line, std::size_t from) {
        if (!goes_on && is_no_command(line)) return;
        if (!goes_on && !command.bytes.empty())
            throw NotUnderstood(
                text.spots[from],
                "a second command of Windows; give a copy with only the one that starts the server");
        goes_on = goes_on_after(line);
        command.append(text, from, from + line.size() - (goes_on ? 1 : 0));
        command.append(' ', text.spots[from + line.size() - 1]);
    });
    return command;
}

/// One word after the other.
class WindowsReader {
public:
    explicit WindowsReader(const LocatedText& command)
        : walk_(command), is_powershell_(command.bytes.starts_with('&')) {
        walk_.skip_any_of(is_powershell_ ? "& \t" : "@");
        if (lowered(command.bytes).starts_with("start ")) skip_start();
    }

    ReadTokens words() {
        for (ReadTokens tokens;; tokens.push_back(word())) {
            is_program_ = tokens.empty();
            if (walk_.skip_any_of(line_blanks); walk_.done()) return tokens;
        }
    }

private:
    /// Its title, and its options.
    void skip_start() {
        walk_.skip_to(line_blanks);
        walk_.skip_any_of(line_blanks);
        if (walk_.peek() == '"') word();
        for (walk_.skip_any_of(line_blanks); walk_.peek() == '/'; walk_.skip_any_of(line_blanks))
            walk_.skip_to(line_blanks);
    }

    ReadToken word() {
        ReadToken token{{}, walk_.spot()};
        while (!walk_.done() && line_blanks.find(walk_.peek()) == line_blanks.npos)
            if (walk_.peek() == '"' || (is_powershell_ && walk_.peek() == '\''))
                quoted(token.text);
            else
                add(token.text, is_powershell_ ? "$`(){}@,;&|<>#" : "%^&|<>'");
        return token;
    }

    void quoted(std::string& text) {
        const Walk begin = walk_;
        const char quote = walk_.next();
        while (walk_.peek() != quote) {
            if (walk_.done()) begin.refuse("this quote is not closed");
            add(text, quote == '\'' ? "" : is_powershell_ ? "$`" : "%");
        }
        if (text.ends_with('\\') || walk_.peek(1) == quote)
            walk_.refuse("programs of Windows read quotes and a \\ here in different ways; write it without");
        walk_.next();
    }

    void add(std::string& text, std::string_view refused) {
        const bool is_variable = walk_.peek() == '%' || walk_.peek() == '$';
        if (refused.find(walk_.peek()) != refused.npos && !(is_variable && is_program_))
            walk_.refuse(is_variable
                             ? "Windows would replace this variable; write its value"
                             : "what this character means to Windows is not certain; quote the word with \"");
        text += walk_.next();
    }

    Walk walk_;
    bool is_powershell_, is_program_ = true; ///< the word, which is no flag
};

} // namespace

bool is_win(std::string_view text) {
    std::string_view first;
    for_each_line(text, [&](std::string_view line, std::size_t) {
        if (first.empty() && line[0] != '#') first = line;
    });
    const std::string begin = lowered(first.substr(0, 16));
    const std::size_t drive = begin.starts_with('"') ? 1 : 0;
    const bool is_path = begin.size() > drive + 2 &&
                         std::isalpha(static_cast<unsigned char>(begin[drive])) != 0 &&
                         begin[drive + 1] == ':' && begin[drive + 2] == '\\';
    return goes_on_after(first) || begin.starts_with("@echo off") || begin.starts_with("& ") ||
           begin.starts_with("start \"") || (begin.starts_with('$') && first.find(" = ") != first.npos) ||
           begin.starts_with("rem ") || (is_path && lowered(first).find(".exe") != std::string::npos);
}

ReadTokens read_win(const LocatedText& text) {
    const LocatedText command = command_in(text);
    return WindowsReader(command).words();
}

} // namespace orvane
