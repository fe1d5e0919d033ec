// The formats flags and sh, read: words as a shell quotes them. What is not certain to be a word of the server's is refused.
#include "formats/format_table.hpp"
#include "formats/source_files.hpp"

namespace orvane {
namespace {

/// Characters that mean something to a shell unless they are quoted.
struct Special {
    std::string_view characters;
    std::string_view what;
    bool in_file = true; ///< also refused in a file of flags, which no shell reads
};
constexpr Special specials_of_shells[] = {
    {"*?[]{}", "the shell might replace this with file names; quote it", false},
    {";|", "a second command; only one is read"},
    {"&", "a second command, or what puts one into the background; leave it out"},
    {"()", "an array or another command; give a file with only the server's flags"},
    {"<>", "redirections are not read; leave them out"},
    {"\r", "a carriage return would be part of the token; save the file with Unix line endings"},
};

constexpr bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr bool is_in_name(char c) {
    return is_letter(c) || (c >= '0' && c <= '9') || c == '_' || c == '.' || static_cast<signed char>(c) < 0;
}

/// It begins with a drive or a backslash.
bool is_windows_path(std::string_view word) {
    return word.starts_with('\\') || (word.size() > 1 && is_letter(word[0]) && word[1] == ':');
}

/// Reads the first command of a text, as a shell does; or a file of flags, which may have a line for each flag.
class CommandReader {
public:
    CommandReader(const LocatedText& text, bool is_file)
        : walk_(text), is_script_(text.bytes.starts_with("#!")), is_file_(is_file && !is_script_) {
        // Nothing of a script follows `exec`.
        if (const auto at = text.bytes.rfind("\nexec "); is_script_ && at != text.bytes.npos)
            walk_.move_to(at + 1);
    }

    ReadTokens command() {
        skip_to_word(" \t\n");
        if (is_file_) walk_.skip("$ "); // a prompt
        while (!walk_.done()) {
            begin_line();
            line_ = tokens_.size();
            while (!walk_.done() && !skip_line_end()) {
                word();
                skip_to_word(" \t");
            }
            skip_to_word(" \t\n");
        }
        return std::move(tokens_);
    }

private:
    /// A line may begin with a flag, or be the value of the flag that is the whole line before it.
    void begin_line() {
        if (tokens_.empty() || (is_file_ && walk_.comes("--"))) return;
        const bool is_value =
            is_file_ && line_ + 1 == tokens_.size() && tokens_[line_].text.starts_with("--");
        if (!is_value)
            walk_.refuse(
                is_script_ ? "this script has several commands; give a copy in which only the one is left "
                             "that starts the server, or in which 'exec ' begins it"
                : is_file_ ? "this line is neither a flag nor the only value of the flag before it; give "
                             "only flags, or one command"
                           : "a second command; only one is read. To continue a line, end it with \\");
        word();
        skip_to_word(" \t");
        if (!walk_.done() && !at_line_end())
            walk_.refuse("a second word; if both are one value, quote it with '");
    }

    [[noreturn]] void refuse_variable() const {
        Walk ahead = walk_;
        const std::string name = ahead.peek() == '$' ? skip_variable(ahead).name : "";
        if (ahead.comes("$@") || ahead.comes("$*") || ahead.comes("${@"))
            walk_.refuse(
                "these are the arguments that the script is called with; give a copy without them, and "
                "write them after the file's name");
        if (ahead.skip("${") && (ahead.skip_to("[} \n"), ahead.comes("[")))
            walk_.refuse("an array of the shell; give a file with its words instead");
        walk_.refuse("the shell would replace this; write the value, or quote it with '",
                     name.empty() ? ""
                                  : "the shell would replace $" + name + "; give its value with --env " +
                                        name + "=VALUE, or quote it with '");
    }

    bool at_line_end() const { return walk_.comes("\n") || (is_file_ && walk_.comes("\r\n")); }

    bool skip_line_end() { return walk_.skip("\n") || (is_file_ && walk_.skip("\r\n")); }

    bool skip_continued() { return walk_.skip("\\\n") || (is_file_ && walk_.skip("\\\r\n")); }

    void skip_to_word(std::string_view between) {
        do
            walk_.skip_any_of(between);
        while (skip_continued() || skip_comment() || (between.ends_with('\n') && skip_line_end()));
    }

    bool skip_comment() {
        if (walk_.peek() != '#') return false;
        walk_.skip_to("\n");
        return true;
    }

    bool at_word_end() const {
        return walk_.done() || std::string_view(" \t\n").find(walk_.peek()) != std::string_view::npos ||
               at_line_end();
    }

    void word() {
        tokens_.push_back({{}, walk_.spot(), walk_.at()});
        std::string& text = tokens_.back().text;
        is_bare_ = walk_.peek() != '\'' && walk_.peek() != '"';
        begin_share(text);
        while (!at_word_end()) {
            if (walk_.peek() == '\'')
                in_single_quotes(text);
            else if (walk_.peek() == '"')
                in_double_quotes(text);
            else if (walk_.peek() == '\\')
                escaped(text);
            else
                unquoted(text);
        }
        tokens_.back().end = walk_.at();
    }

    /// The \\ of a share's path is not an escaped \, in a file.
    void begin_share(std::string& text) {
        if (is_file_ && text.empty() && walk_.comes("\\\\") && is_in_name(walk_.peek(2))) {
            walk_.skip("\\\\");
            text = "\\\\";
        }
    }

    void unquoted(std::string& text) {
        if (walk_.peek() == '$' || walk_.peek() == '`') refuse_variable();
        for (const Special& special : specials_of_shells)
            if ((special.in_file || !is_file_) &&
                special.characters.find(walk_.peek()) != std::string_view::npos)
                walk_.refuse(std::string(special.what));
        if (walk_.peek() == '~' && (text.empty() || text.ends_with('=') || text.ends_with(':')))
            walk_.refuse("the shell would replace ~ with a home directory; write the directory, or quote it");
        text += walk_.next();
    }

    /// A shell removes the \ between two names, which only the path of a file on Windows can have meant.
    void escaped(std::string& text) {
        if (is_bare_ && is_windows_path(text)) {
            if (is_in_name(walk_.peek(1)) && is_file_) {
                text += walk_.next();
                return;
            }
            if (walk_.peek(1) != '\\')
                walk_.refuse("whether this \\ is a part of the path is not certain; quote the path with '");
        } else if (is_file_ && is_in_name(walk_.peek(1))) {
            walk_.refuse("a shell would remove this \\; quote the value with '");
        }
        if (skip_continued()) return;
        if (walk_.peek(1) == '\0' || walk_.peek(1) == '\r') walk_.refuse("there is nothing after this \\");
        walk_.next();
        text += walk_.next();
    }

    void in_single_quotes(std::string& text) {
        const Walk begin = walk_;
        walk_.next();
        while (walk_.peek() != '\'') {
            if (walk_.done()) begin.refuse(unclosed);
            text += walk_.next();
        }
        walk_.next();
    }

    void in_double_quotes(std::string& text) {
        const Walk begin = walk_;
        walk_.next();
        begin_share(text);
        bool has_quote = false;
        while (walk_.peek() != '"') {
            if (walk_.done()) begin.refuse(std::string(unclosed) + (has_quote ? is_quote : ""));
            if (walk_.peek() == '$' || walk_.peek() == '`') refuse_variable();
            if (walk_.skip("\\\n")) continue;
            const bool escapes = walk_.peek() == '\\' && walk_.peek(1) != '\0' &&
                                 std::string_view("$`\"\\").find(walk_.peek(1)) != std::string_view::npos;
            if (escapes) walk_.next();
            has_quote = has_quote || walk_.peek() == '"';
            text += walk_.next();
        }
        walk_.next();
    }

    static constexpr const char* unclosed = "this quote is not closed";
    static constexpr const char* is_quote =
        ": \\\" is a quote in it; write a \\ at its end twice, or leave it out";

    Walk walk_;
    bool is_script_, is_file_;
    ReadTokens tokens_{};
    std::size_t line_ = 0; ///< its first token
    bool is_bare_ = false; ///< the word does not begin with a quote
};

} // namespace

ReadTokens read_flags(const LocatedText& text) {
    return CommandReader(text, true).command();
}

ReadTokens read_sh(const LocatedText& text) {
    return CommandReader(text, false).command();
}

} // namespace orvane
