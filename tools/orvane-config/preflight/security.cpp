// What other users of this machine could take over, and what the server would give away.
#include "preflight/command_line.hpp"
#include "preflight/directory_settings.hpp"
#include "preflight/groups.hpp"
#include "preflight/program_files.hpp"
#include "preflight/tls/files.hpp"
#include "reference/flag_texts.hpp"
#include "system/entry.hpp"
#include "system/other_users.hpp"
#include "text/lists.hpp"
#include "text/path_anchor.hpp"
#include "text/quoting.hpp"

#include "qel/i18n/convert.hpp"
#include "qel/util/canonicalize.hpp"

#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace orvane::preflight {
namespace {

using qel::util::filesystem::canonicalize;
using qel::util::filesystem::Canonicalizer;

/// One thing that must be the server's own.
struct Owned {
    std::u16string_view flag;
    std::size_t position;
    Path path;
    const char* gain; ///< what whoever changes it can do
};

/// From these, other users get what the server does. Nothing comes from what it only writes, but a log or an archive can be
/// made a link to another file.
constexpr std::pair<std::u16string_view, const char*> own_directories[] = {
    {flag::auto_deploy_root, "whoever changes an archive there runs code as the server"},
    {flag::extract_root, "whoever changes what is unpacked there runs code as the server"},
    {flag::lumo_root, "whoever changes the runtime runs code as the server"},
    {flag::log_root, "whoever puts a link there has the server write where it points"},
    {flag::log_archive_root, "whoever puts a link there has the server write where it points"},
};

std::vector<Owned> directories_of(const Context& context) {
    std::vector<Owned> all;
    for (const auto& [flag, gain] : own_directories)
        for (const DirectorySetting& setting : directory_settings) {
            std::size_t position = 0;
            if (setting.flag != flag) continue;
            for (const Path& path : setting.directories(context.settings))
                all.push_back({flag, flag == flag::lumo_root ? position++ : last_given, path, gain});
        }
    return all;
}

void add_program(std::u16string_view flag, std::size_t position, const std::u16string& command,
                 const ProgramSearch& search, std::vector<Owned>& all) {
    const std::u16string name = words_of(command).program;
    if (name.empty()) return;
    const auto file = names_a_place(name) ? with_ending(Path(name), search) : in_path(name, search);
    if (file) all.push_back({flag, position, *file, "whoever changes the program runs code as the server"});
}

std::vector<Owned> programs_of(const Context& context) {
    std::vector<Owned> all;
    const ProgramSearch search = program_search();
    if (const auto& driver = context.settings.driver())
        add_program(flag::driver, last_given, *driver, search, all);
    std::size_t position = 0;
    for (const auto& handler : context.settings.log_handler())
        add_program(flag::log_handler, position++, qel::i18n::utf8_to_ustring(handler.command()), search,
                    all);
    return all;
}

std::vector<Owned> secrets_of(const Context& context) {
    std::vector<Owned> all;
    const auto& https = context.settings.https();
    if (!https) return all;
    for (const SecretFile& file : secret_files(https->ssl_context()))
        all.push_back(
            {file.flag, last_given, file.path, "whoever changes it decides which key the server has"});
    return all;
}

/// The place on the way to it that somebody else may write, the innermost first. In a sticky directory others cannot replace
/// what is there, but they can put there what is not.
std::optional<std::pair<Path, std::string>> writable_place(const Path& path) {
    OtherUsers below = other_users_at(path);
    if (!below.writer.empty()) return {{path, below.writer}};
    for (Path parent = path.parent_path(); !parent.empty(); parent = parent.parent_path()) {
        const OtherUsers there = other_users_at(parent);
        if (!there.writer.empty() && !(there.sticky && below.known)) return {{parent, there.writer}};
        below = there;
    }
    return std::nullopt;
}

void look_for_writers(const Owned& owned, Findings& findings) {
    const Path path = canonicalize(owned.path);
    if (const auto place = writable_place(path))
        findings.add(Kind::others_write, owned.flag,
                     place->second + " may write " + shown(place->first.text()) + ": " + owned.gain,
                     "Let only root or the server's user write it: chmod go-w " + shown(place->first.text()),
                     owned.position);
    else if (other_users_at(path).known)
        findings.add(Kind::own_place, owned.flag, "no other user may change it", {}, owned.position);
}

/// Others read a file only where they may enter all directories above it.
void look_for_readers(std::u16string_view flag, const Path& given, const std::string& what,
                      const Context& context, Findings& findings) {
    const Path path = canonicalize(given);
    bool every_user = other_users_at(path).every_user_reads, group = other_users_at(path).group_reads;
    for (Path parent = path.parent_path(); !parent.empty(); parent = parent.parent_path()) {
        const OtherUsers there = other_users_at(parent);
        every_user = every_user && there.every_user_reads;
        group = group && (there.group_reads || there.every_user_reads);
    }
    if (every_user)
        findings.add(Kind::key_exposed, flag, "every user of this machine can read " + what,
                     "Run: " + command_against_readers(path, shown(given.text())));
    if (group && context.security)
        findings.add(Kind::group_reads, flag, "a group can read " + what,
                     "Make sure that only the server is in the group, or run: chmod g= " +
                         shown(given.text()));
}

bool is_below(const Path& path, const Path& directory) {
    for (Path at = path; !at.empty(); at = at.parent_path())
        if (at == directory) return true;
    return false;
}

/// Whether it lies in the directory, or its name leads through it: a link there offers what is elsewhere.
void look_for_overlap(const Path& files, std::u16string_view flag, const Path& given, bool is_file,
                      Findings& findings) {
    const std::string name = qel::i18n::ustring_to_utf8(std::u16string(flag));
    const Path other = canonicalize(given);
    const Path whole = anchor_of(given.text()) == PathAnchor::full ? given : Path(u"./" + given.text());
    if (is_below(other, files) || Canonicalizer().is_same_or_below(whole, files))
        findings.add(Kind::files_overlap, flag::files_root,
                     "whoever asks gets the files of " + name + ", which " + (is_file ? "is" : "lies") +
                         " in it",
                     "Offer a directory that has nothing else in it.");
    else if (!is_file && is_below(files, other))
        findings.add(Kind::files_overlap, flag::files_root, "it lies in the directory of " + name,
                     "Offer a directory that has nothing to do with the server's own ones.");
}

void look_at_files_root(const Context& context, Findings& findings) {
    constexpr std::u16string_view others[] = {flag::auto_deploy_root, flag::log_root,
                                              flag::log_archive_root, flag::pid_root,
                                              flag::endpoint_root,    flag::response_archive_root};
    if (!context.settings.files_root()) return;
    const Path files = canonicalize(*context.settings.files_root());
    for (const DirectorySetting& setting : directory_settings)
        if (contains(others, setting.flag))
            for (const Path& path : setting.directories(context.settings))
                look_for_overlap(files, setting.flag, path, false, findings);
    for (const Owned& secret : secrets_of(context))
        look_for_overlap(files, secret.flag, secret.path, true, findings);
}

void look_at_flag_files(const Context& context, Findings& findings) {
    std::set<std::string> files;
    for (const SourcePlace& place : context.places)
        if (!place.file.empty()) files.insert(place.file);
    for (const std::string& file : files)
        if (const auto place = writable_place(canonicalize(Path(qel::i18n::utf8_to_ustring(file)))))
            findings.add(Kind::others_write, u"",
                         place->second + " may write " + shown(place->first.text()) +
                             ", from which the flags in " + shown(qel::i18n::utf8_to_ustring(file)) + " come",
                         "Let only root or the server's user write it: chmod go-w " +
                             shown(place->first.text()));
}

bool needs_root(const Context& context) {
    const auto low = [](unsigned port) { return port != 0 && port < 1024; };
    const auto& settings = context.settings;
    return (settings.http() && low(settings.http()->port())) ||
           (settings.https() && low(settings.https()->http().port())) ||
           (settings.control_port() && low(*settings.control_port()));
}

void look_at_the_user(const Context& context, Findings& findings) {
    if (has_every_right() && !needs_root(context))
        findings.add(
            Kind::needless_root, u"",
            "the server would run as root, which no port of these flags needs: whoever takes it over has the "
            "machine",
            "Start it as a user of its own, to which its directories and its key belong.");
}

} // namespace

void look_at_security(const Context& context, Findings& findings) {
    look_at_files_root(context, findings);
    if (can_ask_about_writers()) {
        for (const auto& some : {directories_of(context), programs_of(context), secrets_of(context)})
            for (const Owned& owned : some)
                look_for_writers(owned, findings);
        look_at_flag_files(context, findings);
    } else if (context.security) {
        findings.add(Kind::not_looked_at, u"", "who else may change files is not looked at in this build");
    }
    for (const Owned& secret : secrets_of(context))
        look_for_readers(secret.flag, secret.path, "this file", context, findings);
    for (const std::u16string& file : context.files_with_secrets)
        look_for_readers(u"", Path(file), shown(file) + ", and there seems to be a secret in it", context,
                         findings);
    if (context.security) look_at_the_user(context, findings);
}

} // namespace orvane::preflight
