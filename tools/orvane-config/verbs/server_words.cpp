// Where the server's own words begin in a command line.
#include "verbs/server_words.hpp"

#include "explaining/flag_like.hpp"
#include "explaining/meant_flags.hpp"
#include "formats/source_files.hpp"
#include "probing/probing.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

namespace orvane {
namespace {

bool lacks_a_value(const Tokens& flags) {
    const CommandLine line = occurrences_of(flags);
    return !line.empty() && line.back().size() == 1 && kind_of(line.back()[0].text) == FlagKind::value_flag;
}

/// Also an image of it: acme/orvane:1.2.
bool is_server(std::string_view word) {
    word = program_name(word);
    return word.substr(0, word.find_first_of(":@")) == "orvane";
}

bool is_option(const std::string& word) {
    return word.starts_with('-') && word != "--";
}

/// The server before its flags, or this tool.
bool starts_server(const ReadTokens& tokens, std::size_t at) {
    const std::string& word = tokens[at].text;
    const bool has_flags =
        at + 1 < tokens.size() && tokens[at + 1].text.starts_with("--") && is_option(tokens[at + 1].text);
    return is_server(word) ? has_flags : program_name(word) == "orvane-config";
}

} // namespace

bool begins_with_program(const Tokens& before, const Tokens& tokens) {
    return tokens.size() > 1 && !tokens[0].empty() && !begins_as_flag(tokens[0]) &&
           folded(tokens[1]).starts_with(u"--") && flag_spelled(split_token(tokens[0]).name) == nullptr &&
           !lacks_a_value(before);
}

std::size_t words_before_server(const ReadTokens& tokens) {
    for (std::size_t i = 0; i != tokens.size(); ++i) {
        if (is_meant_as_flag(qel::i18n::utf8_to_ustring(tokens[i].text))) break;
        if (!starts_server(tokens, i)) continue;
        if (i != 0 && is_option(tokens[i - 1].text))
            throw NotUnderstood(tokens[i].spot,
                                "whether this is the server, or the value of the option before it, is not "
                                "certain; leave out what is before the server");
        return i;
    }
    return 0;
}

} // namespace orvane
