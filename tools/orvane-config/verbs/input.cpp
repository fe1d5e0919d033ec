// Where the server's flags come from.
#include "verbs/input.hpp"

#include "explaining/flag_like.hpp"
#include "formats/content.hpp"
#include "formats/source_files.hpp"
#include "probing/diagnosis.hpp"
#include "system/process_line.hpp"
#include "text/escape.hpp"
#include "text/lists.hpp"
#include "verbs/contained_call.hpp"
#include "verbs/reading.hpp"

#include "qel/config/error_code.hpp"
#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <charconv>
#include <ostream>
#include <stdexcept>

namespace orvane {
namespace {

unsigned pid_in(const std::string& text) {
    unsigned pid = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), pid);
    if (error != std::errc() || end != text.data() + text.size() || pid == 0)
        throw Misused(spelled(own("pid")) + " takes a process ID, not '" + text + "'");
    return pid;
}

Source source_of(const Call& call, const OwnOption& option, const std::string& value) {
    if (&option != &own("pid")) return {value, shown_name(call, value), false};
    const std::string file = process_line_file(pid_in(value));
    return {file, file, true};
}

void note(const Call& call, const std::string& text) {
    call.err << "orvane-config: " << text << '\n';
}

/// Throws if one is the drop-in of a unit that is read with it.
void add_drop_ins(Input& input, const SourceFiles& files) {
    for (const std::string& path : files.paths) {
        if (!path.ends_with(".conf")) continue;
        const std::string file = absolute(path);
        if (contains(input.drop_ins, file) && file.find(".d/") != file.npos)
            throw std::runtime_error(files.name_of(path) +
                                     " was read twice: a unit is read with its drop-ins; name only the unit");
        input.drop_ins.push_back(file);
    }
}

void add(Input& input, const Call& call, const Source& source) {
    SourceFiles files{{source.path}, [&](const std::string& path) { return shown_name(call, path); }};
    const Content content = content_in(call, source, files);
    if (!source.is_process) add_drop_ins(input, files);
    const ReadTokens& read = content.tokens;
    for (const std::string& text : files.notes)
        note(call, source.name + ": " + text);
    if (content.format.has_program && source.path == "-")
        note(call, source.name + ": drop-ins of the unit are not read");
    const auto place = [&](const ReadToken& token) { return place_in(files, source, token.spot); };
    if (!source.is_process && !call.root && calls_this_tool(read)) {
        note(call, place(read[0]).text() + ": followed a call of orvane-config");
        return add_call(input, call, {read, files, place});
    }
    Tokens tokens;
    for (const ReadToken& token : read)
        tokens.push_back(qel::i18n::utf8_to_ustring(token.text));
    std::size_t skipped = 0;
    if (!tokens.empty() && (content.has_program || begins_with_program(input.flags, tokens))) {
        skipped = 1;
        if (input.program.empty()) input.program = tokens[0];
        note(call, place(read[0]).text() + ": skipped " +
                       (call.has(own("redact")) ? "" : "'" + escape(read[0].text) + "', ") +
                       "the program's name");
    }
    if (tokens.size() == skipped) note(call, source.name + " contains no flags");
    for (std::size_t i = skipped; i != tokens.size(); ++i) {
        input.flags.push_back(std::move(tokens[i]));
        input.places.push_back(place(read[i]));
    }
}

/// A directory is its files in order.
void add_option(Input& input, const Call& call, const OwnOption& option, const std::string& value) {
    if (&option != &own("from") || !is_directory(value))
        return add(input, call, source_of(call, option, value));
    for (const std::string& file : files_in(value, shown_name(call, value)))
        add(input, call, source_of(call, option, file));
}

bool is_source(const OwnOption* option) {
    return option == &own("from") || option == &own("pid");
}

bool has_source(const Call& call) {
    return !call.files.empty() || std::any_of(call.options.begin(), call.options.end(),
                                              [](const auto& option) { return is_source(option.first); });
}

/// Refuses an option after the flags that nobody else would complain of, or that would be taken for one of the server.
void refuse_misplaced_options(const Input& input, const Call& call) {
    const auto words = static_cast<std::ptrdiff_t>(input.places.size()); // what has a place is in a file
    for (const Occurrence& one : occurrences_of({input.flags.begin() + words, input.flags.end()})) {
        const std::string text = qel::i18n::ustring_to_utf8(one[0].text.substr(0, one[0].text.find(u'=')));
        if (!text.starts_with("--") || kind_of(one[0].text) != FlagKind::no_flag) continue;
        const OwnOption* const option = option_of(text.substr(2), &call.verb);
        if (option != nullptr && (!is_for(judging, call.verb) || own_option_called(option->name) == nullptr))
            throw MisusedInPublic("put " + text + " before the server's flags");
    }
}

/// What is on the command line: flags, then perhaps a command.
void add_words(Input& input, const Call& call) {
    auto end = call.words.end();
    if (takes_command(call.verb)) {
        // After the sources, and the -- that ends the tool's options, a command needs no second --.
        const bool flags_follow = !call.words.empty() && begins_as_flag(call.words.front());
        if (has_source(call) && call.ended && !flags_follow) {
            input.command = call.words;
            return;
        }
        if (call.ended && !flags_follow && !contains(call.words, u"--"))
            throw MisusedInPublic(
                "the server's flags, or a file with them, go before '--'; the command, after it");
        end = end_of_flags(input.flags, call.words);
        if (end != call.words.end()) input.command.emplace(end + 1, call.words.end());
    }
    input.flags.insert(input.flags.end(), call.words.begin(), end);
}

} // namespace

std::string shown_name(const Call& call, const std::string& file) {
    if (file == "-") return standard_input;
    return call.has(own("redact")) ? call.redactor.file(file) : file;
}

Input input_from(const Call& call, const OwnOption& option, const std::string& name) {
    Input input;
    add_option(input, call, option, name);
    return input;
}

Tokens::const_iterator end_of_flags(const Tokens& before, const Tokens& words) {
    if (!contains(words, u"--")) return words.end();
    using qel::config::error_code::unrecognized_flag;
    Tokens all = before;
    all.insert(all.end(), words.begin(), words.end());
    const CommandLine line = occurrences_of(all);
    Answer refusal;
    const std::size_t refused = first_refused(line, refusal);
    if (refused == line.size()) return words.end(); // each is a value
    const bool in_place = refusal.code == unrecognized_flag();
    const std::size_t from = in_place ? line[refused].front().number - 1 : line[refused].back().number;
    const std::size_t skipped = from < before.size() ? 0 : from - before.size();
    return std::find(words.begin() + static_cast<std::ptrdiff_t>(skipped), words.end(), u"--");
}

std::vector<Input> inputs_of_options(const Call& call) {
    std::vector<Input> inputs;
    for (const auto& [option, value] : call.options)
        if (is_source(option)) inputs.push_back(input_from(call, *option, value));
    return inputs;
}

Input input_of_files(const Call& call) {
    Input input;
    for (const std::string& file : call.files)
        add(input, call, source_of(call, own("from"), file));
    for (const auto& [option, value] : call.options)
        if (is_source(option)) add_option(input, call, *option, value);
    add_words(input, call);
    refuse_misplaced_options(input, call);
    if (input.command && input.command->empty()) throw Misused("no command after '--'");
    return input;
}

Input input_of(const Call& call) {
    Input input = input_of_files(call);
    if (call.has(own("redact"))) input.flags = call.redactor.lines({input.flags})[0];
    return input;
}

Verdict judge(const Input& input, bool with_origins, const WarningIds& ignored) {
    Verdict verdict = judge(input.flags, with_origins, ignored);
    verdict.places = input.places;
    return verdict;
}

} // namespace orvane
