// Choice of the verb, and what every verb has in common.
#include "verbs/tool.hpp"

#include "qel/config/build_info.hpp"
#include "qel/config/report.hpp"
#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <exception>
#include <iterator>
#include <ostream>

namespace orvane {
namespace {

constexpr char text_of_help[] =
    R"(Usage: orvane-config VERB ...

Checks a command line of the Orvane server without starting a server, and finds servers that run.

  check [--strict] [--json] FLAGS...
      parse and validate the server's FLAGS; print what they set, or what is wrong with them
  show [--json] FLAGS...
      print every setting, and which of the FLAGS it comes from
  locate [--wait SECONDS] [--json] FLAGS...
      read the runtime files of the server with these FLAGS
  publish FLAGS... [-- COMMAND ARGS...]
      write the runtime files of a server with these FLAGS, and remove them when COMMAND ends,
      or without one when a signal comes, which is 0 for the signals INT and TERM
  flags [--format text|markdown|man]
      print the reference of all flags
  completions [--for NAME] bash|powershell
      print a script that completes flags in a shell, for this tool or for the server's executable NAME
  usage [NAME]
      print the server's synopsis for a program called NAME
  help, version
      print this text; print the library's version

Every verb has --help. The tool's own options come first; FLAGS go to the library as they stand. For check and
show they may come from a file, with --from FILE, or --from - for standard input: a token a line, or each ended by a
zero byte. --json answers in JSON; --strict lets warnings count.

Exit codes: 0 accepted, located or done; 1 refused; 2 orvane-config misused; 3 accepted, but --strict
found a warning; 4 not published; 5 published but stale or malformed; 6 waiting timed out; 7 input or
output failed. 'publish' ends with the exit code of COMMAND, or with 128 and the number of the
signal that ended it.
)";

ExitCode help(const Tokens&, std::ostream& out, std::ostream&) {
    out << text_of_help;
    return ExitCode::done;
}

ExitCode usage(const Tokens& args, std::ostream& out, std::ostream& err) {
    if (args == Tokens{u"--help"}) return help(args, out, err);
    if (args.size() > 1) {
        err << "orvane-config: usage takes one name at most\n";
        return ExitCode::misused;
    }
    qel::config::usage(args.empty() ? u"orvane" : args.front(), out);
    return ExitCode::done;
}

ExitCode version(const Tokens& args, std::ostream& out, std::ostream& err) {
    if (args == Tokens{u"--help"}) return help(args, out, err);
    out << "orvane-config " << zep_config_version << " (" << zep_config_build_date << ")\n";
    return ExitCode::done;
}

struct Verb {
    std::u16string_view name;
    ExitCode (*run)(const Tokens& args, std::ostream& out, std::ostream& err);
    std::string_view options{};
};

// clang-format off
constexpr Verb verbs[] = {
    {u"check",       check, "--from --strict --json --help"}, // the tool's own option
    {u"show",        show, "--from --json --help"}, // the tool's own option
    {u"flags",       flags, "--format --help"}, // the tool's own option
    {u"completions", completions, "bash powershell --for --help"}, // the tool's own option
    {u"locate",      locate, "--wait --json --help"}, // the tool's own option
    {u"publish",     publish, "--help"}, // the tool's own option
    {u"usage",       usage},
    {u"help",        help},
    {u"version",     version},
    {u"--help",      help},
    {u"-h",          help},
    {u"--version",   version},
};
// clang-format on

} // namespace

std::string help_text() {
    return text_of_help;
}

std::vector<std::string> verb_names() {
    std::vector<std::string> names;
    for (const Verb& verb : verbs)
        if (verb.name[0] != u'-') names.push_back(qel::i18n::ustring_to_utf8(verb.name));
    return names;
}

std::string_view own_options(std::string_view verb) {
    const auto found = std::find_if(std::begin(verbs), std::end(verbs), [&](const Verb& one) {
        return qel::i18n::ustring_to_utf8(one.name) == verb;
    });
    return found == std::end(verbs) ? "" : found->options;
}

ExitCode run(const Tokens& args, std::ostream& out, std::ostream& err) {
    if (args.empty()) {
        err << text_of_help;
        return ExitCode::misused;
    }
    const auto verb = std::find_if(std::begin(verbs), std::end(verbs),
                                   [&](const Verb& candidate) { return candidate.name == args.front(); });
    if (verb == std::end(verbs)) {
        err << "orvane-config: no verb '" << qel::i18n::ustring_to_term(args.front())
            << "'; 'orvane-config help' lists them\n";
        return ExitCode::misused;
    }
    ExitCode code{};
    try {
        code = verb->run(Tokens(args.begin() + 1, args.end()), out, err);
    } catch (const std::exception& failure) {
        err << "orvane-config: " << failure.what() << '\n';
        return ExitCode::failed_io;
    }
    if (!out.flush()) {
        err << "orvane-config: the answer could not be written\n";
        return ExitCode::failed_io;
    }
    return code;
}

} // namespace orvane
