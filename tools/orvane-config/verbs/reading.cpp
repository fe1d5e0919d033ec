// One file of flags, or one process, read; and where the server's own words begin in it.
#include "verbs/reading.hpp"

#include "explaining/flag_like.hpp"
#include "explaining/meant_flags.hpp"
#include "formats/content.hpp"
#include "probing/probing.hpp"
#include "text/lists.hpp"
#include "text/spelling.hpp"
#include "verbs/given_variables.hpp"

#include "qel/i18n/convert.hpp"

#include <cstddef>
#include <stdexcept>

namespace orvane {
namespace {

ReadTokens read_from(const LineFormat& format, const LocatedText& text, SourceFiles& files) {
    if (format.has_program) return read_unit(text, files);
    if (format.name == "yaml") return read_manifest(text, files);
    files.is_for_container = format.name == "dockerfile";
    return read(format, text);
}

/// Where it is not known what they stand for; else they are a part of the token.
bool refuses_variables(const LineFormat& format) {
    return format.has_program || format.name == "flags" || format.name == "sh";
}

/// What is in none of the other formats is found to be in one of these.
void refuse_without_flags(const LineFormat& format, const std::string& text, const ReadTokens& tokens) {
    if (format.name == "nul" && has_bytes_of_no_text(text))
        throw NotUnderstood({}, "this is not a text file");
    const bool takes_anything = format.name == "flags" || format.name == "lines" || format.name == "nul";
    constexpr std::size_t few = 3; // words may be a program and its values
    if (takes_anything && tokens.size() > few && has_no_flags(tokens))
        throw NotUnderstood(tokens[0].spot, "nothing in this file begins with --, as flags do");
}

bool lacks_a_value(const Tokens& flags) {
    const CommandLine line = occurrences_of(flags);
    return !line.empty() && line.back().size() == 1 && kind_of(line.back()[0].text) == FlagKind::value_flag;
}

/// Also an image of it: acme/orvane:1.2.
bool is_server(std::string_view word) {
    word = program_name(word);
    return word.substr(0, word.find_first_of(":@")) == "orvane";
}

bool is_long_option(const std::string& word) {
    return word.starts_with("--") && word.size() > 2;
}

/// The server before its flags, or this tool.
bool starts_server(const ReadTokens& tokens, std::size_t at) {
    const std::string& word = tokens[at].text;
    if (!is_server(word)) return program_name(word) == "orvane-config";
    return at + 1 < tokens.size() && is_long_option(tokens[at + 1].text);
}

/// How many words are before the server's program, or a call of this tool, as in: sudo -u web nice orvane --wait. None if one of
/// them may be a flag, or the first one begins as one.
std::size_t words_before_server(const ReadTokens& tokens) {
    bool has_option = false;
    for (std::size_t i = 0; i != tokens.size() && !tokens[0].text.starts_with('-'); ++i) {
        if (is_meant_as_flag(qel::i18n::utf8_to_ustring(tokens[i].text))) break;
        has_option = has_option || is_long_option(tokens[i].text);
        if (!has_option && tokens[i].text.find(" --") != std::string::npos)
            throw NotUnderstood(tokens[i].spot,
                                "a whole command in one word; give a file with only that command");
        if (!starts_server(tokens, i)) continue;
        if (i != 0 && tokens[i - 1].text.starts_with('-') && tokens[i - 1].text != "--")
            throw NotUnderstood(tokens[i].spot,
                                "whether this is the server, or the value of the option before it, is not "
                                "certain; leave out what is before the server");
        return i;
    }
    return 0;
}

/// Nothing but what starts the server.
void leave_out_wrapper(ReadTokens& tokens, const LineFormat& format, SourceFiles& files) {
    const std::size_t count = words_before_server(tokens);
    if (count == 0) return;
    for (const ReadToken& token : tokens)
        if (format.name == "flags" && token.text.find('%') != std::string::npos)
            throw NotUnderstood(token.spot, "what is before the server, as in a crontab, may replace this %; "
                                            "give only the server and its flags");
    tokens.erase(tokens.begin(), tokens.begin() + static_cast<std::ptrdiff_t>(count));
    files.notes.push_back("left out what is before the server: " + std::to_string(count) +
                          (count == 1 ? " word" : " words"));
}

} // namespace

SourcePlace place_in(const SourceFiles& files, const Source& source, Spot spot) {
    return {spot.file == 0 ? source.name : files.name_of(files.paths[spot.file]), spot};
}

Content content_in(const Call& call, const Source& source, SourceFiles& files) {
    const auto contained = call.contained.find(source.path);
    const std::string text = contained != call.contained.end() ? contained->second
                             : source.is_process               ? bytes_of(source.path, source.name)
                                                               : content_of(source.path, source.name);
    if (!source.is_process && is_program(text)) {
        if (!contains(call.files, source.path) || call.words.empty())
            throw std::runtime_error(source.name + ": this is a program, not a file of flags");
        return {format_named("lines"), {{source.name, {}}}, true};
    }
    if (!source.is_process) refuse_unless_utf8(text, source.name);
    if (const std::string kind = foreign_kind(text); !kind.empty() && !source.is_process)
        throw std::runtime_error(source.name + ": " + kind);
    const std::string wanted = source.is_process ? "nul" : call.value(own("from-format"));
    const LineFormat& format = wanted.empty() ? format_of(text) : format_named(wanted);
    try {
        const std::vector<Variable> variables = variables_in(call);
        ReadTokens tokens =
            variables.empty() || source.is_process
                ? read_from(format, located(text), files)
                : read_from(format, with_stand_ins(located(text), variables, refuses_variables(format)),
                            files);
        put_values(tokens, variables);
        if (!source.is_process)
            tokens = unwrapped(std::move(tokens), format.name == "flags" || format.name == "sh");
        if (format.name != "nul" && format.name != "lines") leave_out_wrapper(tokens, format, files);
        if (wanted.empty()) refuse_without_flags(format, text, tokens);
        return {format, std::move(tokens), format.has_program || source.is_process};
    } catch (const NotUnderstood& fault) {
        throw std::runtime_error(
            place_in(files, source, fault.spot).text() + ": " +
            (fault.whole.empty() || call.has(own("redact")) ? fault.what() : fault.whole) + " (format " +
            std::string(format.name) +
            (wanted.empty() ? "; " + spelled(own("from-format")) + " chooses another)" : ")"));
    }
}

bool begins_with_program(const Tokens& before, const Tokens& tokens) {
    return tokens.size() > 1 && !tokens[0].empty() && !begins_as_flag(tokens[0]) &&
           folded(tokens[1]).starts_with(u"--") && flag_spelled(split_token(tokens[0]).name) == nullptr &&
           !lacks_a_value(before);
}

} // namespace orvane
