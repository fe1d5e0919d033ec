// The manual page of the tool, from the tables of verbs, options, exit codes and findings.
#include "explaining/kinds.hpp"
#include "manuals/help.hpp"
#include "manuals/pages.hpp"
#include "preflight/groups.hpp"
#include "printing/roff.hpp"
#include "reference/reference.hpp"

#include <ostream>

namespace orvane::manuals {
namespace {

struct Entry {
    std::string_view name, text;
};

constexpr Entry files[] = {
    {"/usr/share/orvane-config/schemas/*.json", "JSON Schemas of the answers in JSON."},
    {"main.pid, control, http, https",
     "The runtime files of a server, in its pid root and its endpoint root: see orvane-runtime-files(5)."},
};

constexpr Entry environment[] = {
    {"PATH", "'preflight' looks there for programs; 'exec' and 'publish' for COMMAND."},
    {"SSL_CERT_FILE, SSL_CERT_DIR",
     "Where 'preflight' looks for the certificates of the system instead of OpenSSL's usual places."},
    {"NO_COLOR", "If set and not empty, faults are not coloured on a terminal."},
    {"TERM", "If it is 'dumb', faults are not coloured."},
};

/// They build on each other.
constexpr Entry examples[] = {
    {"Check a command line:", "check {auto_deploy_root} /srv/orvane/deploy {http} 9910"},
    {"Correct one that the server refuses:",
     "fix {auto_deploy_root} /srv/orvane/deploy {num_workers}=4 {http} 9910"},
    {"Write the flags to a file, sorted, and without those that have no effect:",
     "convert --to lines --tidy {http} 9910 {pid_root} /run/orvane {auto_deploy_root} /srv/orvane/deploy "
     ">flags.txt"},
    {"Print one setting for a script:", "check --get http.port flags.txt"},
    {"See what a change would do:",
     "diff --from flags.txt -- {auto_deploy_root} /srv/orvane/deploy {http} 9920"},
    {"Ask whether the server can start on this machine:", "preflight flags.txt"},
    {"Start the server with the flags in the file:", "exec flags.txt -- orvane"},
    {"Find the server when it runs:", "status flags.txt"},
};

void write(const std::string& heading, std::string_view text, std::ostream& out) {
    out << ".TP\n.B " << heading << '\n' << roff(text) << '\n';
}

template <class Entries>
void write_section(std::string_view title, const Entries& entries, std::ostream& out) {
    out << ".SH " << title << '\n';
    for (const Entry& one : entries)
        write(roff(one.name), one.text, out);
}

void write_verbs(std::ostream& out) {
    out << ".SH SYNOPSIS\n.nf\n";
    for (const Verb& verb : verbs)
        out << roff(synopsis_of(verb)) << '\n';
    out << ".fi\n.SH DESCRIPTION\n"
        << roff(purpose) << '\n'
        << roff("FLAGS are the server's flags: see orvane-flags(7). A token is a flag or a value.")
        << "\n.SH VERBS\n";
    for (const Verb& verb : verbs)
        write(roff(with(verb.name, verb.arguments)), meaning(verb), out);
}

void write_options(std::ostream& out) {
    out << ".SH OPTIONS\n" << roff(where_options_go) << '\n';
    for (const OwnOption& option : own_options)
        write(roff(heading(option)),
              std::string(option.verbs.empty()        ? "every verb"
                          : option.verbs == any_flags ? "every verb that takes FLAGS"
                                                      : option.verbs) +
                  ": " + std::string(option.meaning),
              out);
}

void write_groups(std::ostream& out) {
    out << ".SH GROUPS\n"
        << roff("'preflight' looks at these groups; --only and --skip choose some.") << '\n';
    for (const preflight::Group& group : preflight::groups)
        write(roff(group.name), group.looks_at, out);
}

void write_exit_codes(std::ostream& out) {
    out << ".SH EXIT STATUS\n";
    for (const ExitMeaning& one : exit_codes)
        write(std::to_string(static_cast<int>(one.code)),
              (one.verbs.empty() ? "" : std::string(one.verbs) + ": ") + std::string(one.meaning), out);
    for (const CommandCode& one : command_codes)
        out << ".PP\n" << roff(one.meaning) << '\n';
}

void write_examples(std::ostream& out) {
    out << ".SH EXAMPLES\n";
    for (const Entry& one : examples)
        out << roff_example(one.name, "orvane-config " + with_flags(one.text));
}

void write_diagnostics(std::ostream& out) {
    out << ".SH DIAGNOSTICS\n" << roff("'orvane-config explain ID' explains these ids.") << '\n';
    std::string_view about;
    for (const Explanation& kind : all_kinds()) {
        if (kind.about != about) out << ".SS Ids of " << kind.about << "s\n";
        about = kind.about;
        write(roff(kind.id), kind.summary, out);
    }
}

} // namespace

void write_tool(std::ostream& out) {
    write_verbs(out);
    write_options(out);
    write_groups(out);
    write_exit_codes(out);
    write_section("FILES", files, out);
    write_section("ENVIRONMENT", environment, out);
    write_examples(out);
    write_diagnostics(out);
}

} // namespace orvane::manuals
