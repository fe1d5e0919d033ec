// One file of flags, or one process, read.
#include "verbs/reading.hpp"

#include "formats/content.hpp"
#include "text/lists.hpp"
#include "verbs/given_variables.hpp"
#include "verbs/server_words.hpp"

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

/// Nothing but what starts the server.
void leave_out_wrapper(ReadTokens& tokens, SourceFiles& files) {
    const std::size_t count = words_before_server(tokens);
    if (count == 0) return;
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
        if (wanted.empty()) refuse_without_flags(format, text, tokens);
        if (!source.is_process)
            tokens = unwrapped(std::move(tokens), format.name == "flags" || format.name == "sh");
        if (format.name != "nul" && format.name != "lines") leave_out_wrapper(tokens, files);
        return {format, std::move(tokens), format.has_program || source.is_process};
    } catch (const NotUnderstood& fault) {
        throw std::runtime_error(
            place_in(files, source, fault.spot).text() + ": " +
            (fault.whole.empty() || call.has(own("redact")) ? fault.what() : fault.whole) + " (format " +
            std::string(format.name) +
            (wanted.empty() ? "; " + spelled(own("from-format")) + " chooses another)" : ")"));
    }
}

} // namespace orvane
