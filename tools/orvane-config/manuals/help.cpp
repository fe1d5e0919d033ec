// What the tool says of itself.
#include "manuals/help.hpp"

#include "preflight/groups.hpp"
#include "printing/wrapping.hpp"

#include <cctype>

namespace orvane {
namespace {

constexpr std::string_view synopsis = "Usage: orvane-config VERB [OPTIONS] ...";
constexpr std::string_view what_to_read_next =
    "'orvane-config VERB --help' lists the options and exit codes of a verb.\n"
    "FLAGS are the server's; a FILE of them can stand in their place: check FILE.\n"
    "'orvane-config --version' prints the version.\n"
    "For a browser there is orvane-config.html: see page.md in the documentation.\n";
/// The column of the explanations of options.
constexpr std::size_t text_column = 22;

std::string options_of(const Verb& verb) {
    std::string text = takes_flags(verb) ? wrapped(where_options_go, 0) + "\n\nOptions\n" : "Options\n";
    for (const OwnOption& option : own_options)
        if (takes(verb, option)) text += beside("  " + heading(option), option.meaning, text_column) + "\n";
    return text;
}

std::string groups_of(const Verb& verb) {
    if (!takes(verb, own("only"))) return {};
    std::string text = "Groups\n";
    for (const preflight::Group& group : preflight::groups)
        text += beside("  " + std::string(group.name), group.looks_at, text_column) + "\n";
    return text + "\n";
}

std::string exit_codes_of(const Verb& verb) {
    std::string text = "Exit codes\n";
    for (const ExitMeaning& one : exit_codes)
        if (is_for(one.verbs, verb))
            text += beside("  " + std::to_string(static_cast<int>(one.code)), one.meaning, 5) + "\n";
    for (const CommandCode& one : command_codes)
        if (one.verb == verb.name) text += wrapped(one.meaning, 0) + "\n";
    return text;
}

} // namespace

std::string synopsis_of(const Verb& verb) {
    return with(with("orvane-config " + std::string(verb.name), "[OPTIONS]"), verb.arguments);
}

std::string meaning(const Verb& verb) {
    return with(std::string(verb.summary) + ".", verb.more);
}

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
    return "Usage: " + synopsis_of(verb) + "\n\n" + wrapped(about, 0) + "\n\n" + options_of(verb) + "\n" +
           groups_of(verb) + exit_codes_of(verb);
}

} // namespace orvane
