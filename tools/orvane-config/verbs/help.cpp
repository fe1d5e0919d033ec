// What the tool says of itself.
#include "verbs/help.hpp"

#include "printing/roff.hpp"
#include "printing/wrapping.hpp"
#include "verbs/call.hpp"

#include "qel/config/build_info.hpp"
#include "qel/i18n/convert.hpp"

#include <ostream>
#include <ranges>

namespace orvane {
namespace {

constexpr std::string_view purpose =
    "Checks command lines of the Orvane server without starting it, and finds running servers.";
constexpr std::string_view own_options_first =
    "VERB --help lists the options of a verb. They go before FLAGS, as --name VALUE or --name=VALUE; -- ends "
    "them. From the first flag on, everything is passed to the library unchanged.";
constexpr std::string_view code_of_publish =
    "'publish' ends with the exit code of COMMAND, or with 128 plus the number of the signal that ended it; "
    "without COMMAND, with 0 after the signals INT and TERM.";

constexpr std::string_view code_of_exec =
    "'exec' ends as COMMAND does, or with 127 if there is no such command, or 126 if it cannot be started.";

/// The column of the explanations.
constexpr std::size_t text_column = 22;

std::string with(std::string_view name, std::string_view rest) {
    return std::string(name) + (rest.empty() ? "" : " ") + std::string(rest);
}

std::string exit_code_list() {
    std::string text = "Exit codes:";
    for (const auto& [code, meaning] : exit_codes)
        text += " " + std::to_string(static_cast<int>(code)) + " " + std::string(meaning) +
                (code == std::ranges::rbegin(exit_codes)->code ? "." : ";");
    return text;
}

} // namespace

std::string help_text() {
    std::string text = "Usage: orvane-config VERB [OPTIONS] ...\n\n" + wrapped(purpose, 0) + "\n";
    std::string_view group;
    for (const Verb& verb : verbs) {
        if (verb.group != group) text += "\n" + std::string(verb.group) + "\n";
        group = verb.group;
        text += beside("  " + with(verb.name, verb.arguments), verb.meaning, text_column) + "\n";
    }
    return text + "\n" + wrapped(own_options_first, 0) + "\n\n" +
           wrapped(exit_code_list() + " " + std::string(code_of_publish) + " " + std::string(code_of_exec),
                   0) +
           "\n";
}

std::string help_text(const Verb& verb) {
    std::string text = "Usage: orvane-config " + with(with(verb.name, "[OPTIONS]"), verb.arguments) + "\n\n" +
                       wrapped(verb.meaning, 0) + "\n\n" +
                       (takes_flags(verb) ? "Options, before FLAGS; -- ends them\n" : "Options\n");
    for (const OwnOption& option : own_options)
        if (takes(verb, option))
            text += beside("  " + with(spelled(option), option.value), option.meaning, text_column) + "\n";
    if (takes_command(verb))
        text += "\n" + wrapped(std::string(code_of_publish) + " " + std::string(code_of_exec), 0) + "\n";
    return text;
}

std::string manual_head() {
    std::string text = ".TH ORVANE\\-CONFIG 1 \"\" \"orvane\\-config " + std::string(zep_config_version) +
                       "\"\n.SH NAME\norvane\\-config \\- check command lines of the Orvane server, and find "
                       "running servers\n.SH SYNOPSIS\n.nf\n";
    for (const Verb& verb : verbs)
        text += roff("orvane-config " + with(with(verb.name, "[OPTIONS]"), verb.arguments)) + "\n";
    text += ".fi\n.SH DESCRIPTION\n" + roff(purpose) + "\n.SH VERBS\n";
    for (const Verb& verb : verbs)
        text += ".TP\n.B " + roff(with(verb.name, verb.arguments)) + "\n" + roff(verb.meaning) + "\n";
    text += ".SH OPTIONS\n" + roff(own_options_first) + "\n";
    for (const OwnOption& option : own_options)
        text += ".TP\n.B " + roff(with(spelled(option), option.value)) + "\n" +
                roff(option.verbs.empty()        ? "every verb"
                     : option.verbs == any_flags ? "every verb that takes FLAGS"
                                                 : option.verbs) +
                ": " + roff(option.meaning) + "\n";
    text += ".SH EXIT STATUS\n";
    for (const auto& [code, meaning] : exit_codes)
        text += ".TP\n.B " + std::to_string(static_cast<int>(code)) + "\n" + roff(meaning) + "\n";
    return text + ".PP\n" + roff(code_of_publish) + "\n" + roff(code_of_exec) + "\n.SH FLAGS OF THE SERVER\n";
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
