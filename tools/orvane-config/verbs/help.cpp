// What the tool says of itself.
#include "verbs/help.hpp"

#include "printing/roff.hpp"
#include "printing/wrapping.hpp"
#include "verbs/call.hpp"

#include "qel/config/build_info.hpp"
#include "qel/i18n/convert.hpp"

#include <cctype>
#include <ostream>

namespace orvane {
namespace {

constexpr std::string_view purpose = "Checks the Orvane server's command lines, and finds running servers.";
constexpr std::string_view synopsis = "Usage: orvane-config VERB [OPTIONS] ...";
constexpr std::string_view what_to_read_next =
    "'orvane-config VERB --help' lists the options and exit codes of a verb.\n"
    "FLAGS are the server's. --from FILE reads them from a file.\n";
constexpr std::string_view where_options_go =
    "Options go before FLAGS, as --name VALUE or --name=VALUE; -- ends them. From the first flag on, "
    "everything is passed to the library unchanged.";

/// How verbs end that pass on the exit code of a command.
constexpr struct {
    std::string_view verb, code;
} codes_of_commands[] = {
    {"publish",
     "'publish' ends with the exit code of COMMAND, or with 128 plus the number of the signal that "
     "ended it; without COMMAND, with 0 after the signals INT and TERM."},
    {"exec", "'exec' ends as COMMAND does, or with 127 if there is no such command, or 126 if it cannot be "
             "started."},
};

/// The column of the explanations of options.
constexpr std::size_t text_column = 22;

std::string with(std::string_view name, std::string_view rest) {
    return std::string(name) + (rest.empty() ? "" : " ") + std::string(rest);
}

/// The summary as a sentence, and what follows it.
std::string meaning(const Verb& verb) {
    return with(std::string(verb.summary) + ".", verb.more);
}

std::string options_of(const Verb& verb) {
    std::string text = takes_flags(verb) ? wrapped(where_options_go, 0) + "\n\nOptions\n" : "Options\n";
    for (const OwnOption& option : own_options)
        if (takes(verb, option))
            text += beside("  " + with(spelled(option), option.value), option.meaning, text_column) + "\n";
    return text;
}

std::string exit_codes_of(const Verb& verb) {
    std::string text = "Exit codes\n";
    for (const ExitMeaning& one : exit_codes)
        if (is_for(one.verbs, verb))
            text += beside("  " + std::to_string(static_cast<int>(one.code)), one.meaning, 5) + "\n";
    for (const auto& [name, code] : codes_of_commands)
        if (name == verb.name) text += wrapped(code, 0) + "\n";
    return text;
}

} // namespace

std::string short_help() {
    return std::string(synopsis) + "\n" + "'orvane-config help' lists the verbs.\n";
}

std::string help_text() {
    std::string text = std::string(synopsis) + "\n\n" + std::string(purpose) + "\n";
    std::string_view group;
    for (const Verb& verb : verbs) {
        if (verb.group != group) text += "\n" + std::string(verb.group) + "\n";
        group = verb.group;
        text += beside("  " + std::string(verb.name), verb.summary, summary_column) + "\n";
    }
    return text + "\n" + std::string(what_to_read_next);
}

std::string help_text(const Verb& verb) {
    std::string about = meaning(verb);
    about[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(about[0])));
    return "Usage: orvane-config " + with(with(verb.name, "[OPTIONS]"), verb.arguments) + "\n\n" +
           wrapped(about, 0) + "\n\n" + options_of(verb) + "\n" + exit_codes_of(verb);
}

std::string manual_head() {
    std::string text = ".TH ORVANE\\-CONFIG 1 \"\" \"orvane\\-config " + std::string(zep_config_version) +
                       "\"\n.SH NAME\norvane\\-config \\- check command lines of the Orvane server, and find "
                       "running servers\n.SH SYNOPSIS\n.nf\n";
    for (const Verb& verb : verbs)
        text += roff("orvane-config " + with(with(verb.name, "[OPTIONS]"), verb.arguments)) + "\n";
    text += ".fi\n.SH DESCRIPTION\n" + roff(purpose) + "\n.SH VERBS\n";
    for (const Verb& verb : verbs)
        text += ".TP\n.B " + roff(with(verb.name, verb.arguments)) + "\n" + roff(meaning(verb)) + "\n";
    text += ".SH OPTIONS\n" + roff(where_options_go) + "\n";
    for (const OwnOption& option : own_options)
        text += ".TP\n.B " + roff(with(spelled(option), option.value)) + "\n" +
                roff(option.verbs.empty()        ? "every verb"
                     : option.verbs == any_flags ? "every verb that takes FLAGS"
                                                 : option.verbs) +
                ": " + roff(option.meaning) + "\n";
    text += ".SH EXIT STATUS\n";
    for (const ExitMeaning& one : exit_codes)
        text += ".TP\n.B " + std::to_string(static_cast<int>(one.code)) + "\n" + roff(one.meaning) + "\n";
    for (const auto& [name, code] : codes_of_commands)
        text += ".PP\n" + roff(code) + "\n";
    return text + ".SH FLAGS OF THE SERVER\n";
}

ExitCode help(const Call& call) {
    if (call.words.empty()) {
        call.out << help_text();
        return ExitCode::done;
    }
    const std::string name = qel::i18n::ustring_to_term(call.words.front());
    const Verb* const verb = verb_of(name);
    if (verb == nullptr) throw Misused("there is no verb '" + name + "'");
    call.out << help_text(*verb);
    return ExitCode::done;
}

} // namespace orvane
