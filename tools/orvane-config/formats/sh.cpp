// The format sh: a command line of a POSIX shell. What bash, dash and zsh would not all leave as it is, is refused.
#include "formats/format_table.hpp"
#include "text/shell_word.hpp"

namespace orvane {
namespace {

/// Characters that mean something to a shell unless they are quoted.
struct Special {
    std::string_view characters;
    std::string_view what;
};
constexpr Special specials_of_shells[] = {
    {"$`", "the shell would replace this; write the value, or quote it with '"},
    {"*?[]{}", "the shell might replace this with file names; quote it"},
    {";&|()", "a second command; only one is read"},
    {"<>", "redirections are not read"},
    {"\r", "a carriage return would be part of the token; save the file with Unix line endings"},
};

/// Reads the first command of a text.
class CommandReader {
public:
    explicit CommandReader(const LocatedText& text) : walk_(text) {}

    ReadTokens command() {
        skip_to_word(" \t\n");
        while (!walk_.done() && walk_.peek() != '\n') {
            word();
            skip_to_word(" \t");
        }
        skip_to_word(" \t\n");
        if (!walk_.done())
            walk_.refuse("a second command; only one is read. To continue a line, end it with \\");
        return std::move(tokens_);
    }

private:
    void skip_to_word(std::string_view between) {
        do
            walk_.skip_any_of(between);
        while (walk_.skip("\\\n") || skip_comment());
    }

    bool skip_comment() {
        if (walk_.peek() != '#') return false;
        walk_.skip_to("\n");
        return true;
    }

    void word() {
        tokens_.push_back({{}, walk_.spot()});
        std::string& text = tokens_.back().text;
        while (!walk_.done() && std::string_view(" \t\n").find(walk_.peek()) == std::string_view::npos) {
            if (walk_.peek() == '\'')
                in_single_quotes(text);
            else if (walk_.peek() == '"')
                in_double_quotes(text);
            else if (walk_.peek() == '\\')
                escaped(text);
            else
                unquoted(text);
        }
    }

    void unquoted(std::string& text) {
        for (const Special& special : specials_of_shells)
            if (special.characters.find(walk_.peek()) != std::string_view::npos)
                walk_.refuse(std::string(special.what));
        if (walk_.peek() == '~' && (text.empty() || text.ends_with('=') || text.ends_with(':')))
            walk_.refuse("the shell would replace ~ with a home directory; write the directory, or quote it");
        text += walk_.next();
    }

    void escaped(std::string& text) {
        if (walk_.skip("\\\n")) return;
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
        while (walk_.peek() != '"') {
            if (walk_.done()) begin.refuse(unclosed);
            if (walk_.peek() == '$' || walk_.peek() == '`')
                walk_.refuse(std::string(specials_of_shells[0].what));
            if (walk_.skip("\\\n")) continue;
            const bool escapes = walk_.peek() == '\\' && walk_.peek(1) != '\0' &&
                                 std::string_view("$`\"\\").find(walk_.peek(1)) != std::string_view::npos;
            if (escapes) walk_.next();
            text += walk_.next();
        }
        walk_.next();
    }

    static constexpr const char* unclosed = "this quote is not closed";

    Walk walk_;
    ReadTokens tokens_{};
};

} // namespace

bool is_sh(std::string_view text) {
    const std::string_view line = first_line_of(text);
    return line.find_first_of(" \t") != line.npos || line.ends_with('\\');
}

ReadTokens read_sh(const LocatedText& text) {
    return CommandReader(text).command();
}

std::string as_sh(const TokenGroups& groups) {
    return joined(groups, sh_word, " ") + '\n';
}

} // namespace orvane
