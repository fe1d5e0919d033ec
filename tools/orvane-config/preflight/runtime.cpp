// The files of running and former servers.
#include "preflight/groups.hpp"
#include "reference/flag_texts.hpp"
#include "runtime/runtime_state.hpp"
#include "system/entry.hpp"

#include "text/quoting.hpp"

namespace orvane::preflight {
namespace {

/// The flag whose directory holds the file.
std::u16string_view flag_of(const FileReport& file) {
    return file.name == "main.pid" ? flag::pid_root : flag::endpoint_root;
}

void look_at_odd_file(const FileReport& file, const Entry& there, Findings& findings) {
    // Otherwise it is the directory that is not as it should be, which has its own findings.
    const Entry directory = entry_at(file.path.parent_path());
    if (directory.state != Entry::State::directory || !directory.execute) return;
    const std::string name = shown(file.path.text());
    if (there.state == Entry::State::file)
        findings.add(Kind::not_a_runtime_file, flag_of(file),
                     name + " is not a runtime file, and would be overwritten (" + file.text + ")",
                     "Move it away if it is still needed.");
    else
        findings.add(Kind::in_the_way, flag_of(file), name + " is in the way: " + file.text,
                     "Remove it, or choose another directory.");
}

void look_at_rights(const FileReport& file, const Entry& there, Findings& findings) {
    if (there.state != Entry::State::file || there.write || file.state == FileState::running) return;
    findings.add(Kind::file_not_writable, flag_of(file),
                 "user " + user_name() + " may not write " + shown(file.path.text()),
                 "Remove it, or give user " + user_name() +
                     " this right: " + command_to_grant(Right::write, file.path, there.own));
}

void look_at_running(const FileReport& file, const Context& context, Findings& findings) {
    const std::string belongs = shown(file.path.text()) + " belongs to " + owner_of(file);
    if (file.pid == 0) return; // the pid file has its own finding
    if (file.pid == context.ends_before)
        findings.add(Kind::restarted, flag_of(file), belongs + ", which is to be restarted");
    else
        findings.add(Kind::server_running, flag_of(file), belongs + ", which is running",
                     "Stop that server, or choose another directory for this one. To check for a restart of "
                     "that server, add --restart.");
}

void look_at_unreadable(const FileReport& file, const Entry& there, Findings& findings) {
    if (there.state == Entry::State::loop || there.state == Entry::State::too_long)
        look_at_odd_file(file, there, findings);
    else if (there.state == Entry::State::file) // otherwise the directory has its own findings
        findings.add(Kind::cannot_tell, flag_of(file),
                     shown(file.path.text()) + " cannot be read: " + file.text,
                     "Run preflight as the server's user.");
}

void look_at_file(const FileReport& file, const Context& context, Findings& findings) {
    const Entry there = entry_at(file.path);
    const std::string name = shown(file.path.text());
    const std::u16string_view flag = flag_of(file);
    look_at_rights(file, there, findings);
    switch (file.state) {
    case FileState::accepting: // nobody has asked
    case FileState::not_accepting:
    case FileState::running:
        return look_at_running(file, context, findings);
    case FileState::published:
        return findings.add(Kind::may_be_running, flag,
                            name + " announces " + file.text +
                                ", and no pid file says whether that server is running",
                            "Make sure that it has stopped: this server would overwrite the file.");
    case FileState::starting:
        return findings.add(Kind::may_be_running, flag,
                            name + " is empty: a server is starting, or was killed while starting",
                            "Run preflight again in a moment.");
    case FileState::stale:
        return findings.add(Kind::stale_file, flag, name + " is stale, and will be replaced: " + file.text);
    case FileState::not_published:
        return findings.add(Kind::no_file, flag, "there is no " + name + " yet");
    case FileState::malformed:
        return look_at_odd_file(file, there, findings);
    case FileState::unreadable:
        return look_at_unreadable(file, there, findings);
    }
}

/// Another server may keep its pid file beside its endpoints.
void look_at_neighbour(const qel::config::ServerSettings& settings, Findings& findings) {
    if (const auto file = running_neighbour(settings))
        findings.add(Kind::server_running, flag::endpoint_root,
                     shown(file->path.text()) + " belongs to " + owner_of(*file) +
                         ", which is running: another server uses this directory",
                     "Give each server a different endpoint root.");
}

} // namespace

void look_at_runtime(const Context& context, Findings& findings) {
    for (const FileReport& file : inspect_runtime_files(context.settings))
        look_at_file(file, context, findings);
    look_at_neighbour(context.settings, findings);
}

} // namespace orvane::preflight
