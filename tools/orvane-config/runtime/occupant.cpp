// What keeps a publisher out of the directories of its runtime files.
#include "runtime/occupant.hpp"

#include "runtime/endpoint.hpp"
#include "system/port_holder.hpp"

#include "qel/i18n/convert.hpp"

#include <chrono>
#include <map>
#include <thread>

namespace orvane {
namespace {

using qel::config::ServerSettings;

constexpr std::chrono::milliseconds pause_between(20);

std::string shown(const Path& path) {
    return qel::i18n::ustring_to_term(path.text());
}

std::string running_owner(const FileReport& pid) {
    return owner_of(pid) + " is running and owns " + shown(pid.path);
}

/// In the order in which every publisher locks them, and each once.
std::map<std::string, Path> roots_of(const ServerSettings& settings) {
    std::map<std::string, Path> roots;
    for (const FileReport& file : inspect_runtime_files(settings)) {
        const Path& root = file.name == "main.pid" ? *settings.pid_root() : *settings.endpoint_root();
        roots.emplace(identity_of(root), root);
    }
    return roots;
}

/// Whether an endpoint's file is that of the killed server whose pid file was found, not of one that keeps its own elsewhere.
bool is_explained(const FileReport& file) {
    return file.state == FileState::stale && file.expected_port == 0;
}

/// Why an endpoint belongs to another server; empty when nobody listens there.
std::string listener_of(const FileReport& file) {
    const auto endpoint = endpoint_in(file.text);
    if (!endpoint || is_explained(file)) return {};
    const auto holders = holders_of(endpoint->port);
    if (holders.empty()) return {};
    const unsigned pid = holders.front().pid;
    return shown(file.path) + " announces " + file.text + ", and " +
           (pid == 0 ? "a process" : "process " + std::to_string(pid)) +
           " listens on that port; give this server another endpoint root, or remove the file";
}

std::string obstacle(const FileReport& file) {
    if (file.state == FileState::malformed)
        return shown(file.path) + " is in the way: " + file.text + "; move or remove it";
    if (file.state == FileState::unreadable) return shown(file.path) + " cannot be read: " + file.text;
    return listener_of(file);
}

} // namespace

std::string other_publisher(const ServerSettings& settings, RootLocks& locks) {
    int pauses = 100;
    for (const auto& [identity, root] : roots_of(settings)) {
        DirectoryLock& lock = locks.emplace_back(root);
        for (; !lock.try_to_lock(); --pauses) {
            const auto files = inspect_runtime_files(settings);
            if (!files.empty() && files.front().state == FileState::running && files.front().pid != 0 &&
                (pauses == 0 || !files.front().elsewhere))
                return running_owner(files.front());
            if (pauses == 0)
                return "another publisher" +
                       (lock.holder() == 0 ? "" : " (process " + std::to_string(lock.holder()) + ")") +
                       " has locked " + shown(root);
            std::this_thread::sleep_for(pause_between);
        }
    }
    return {};
}

std::string occupant(const ServerSettings& settings) {
    std::vector<FileReport> files = inspect_runtime_files(settings);
    // An empty file: its writer has opened it and not written yet, or was killed just then.
    for (int pauses = 0; worst_of(files) == FileState::starting && pauses != 50; ++pauses) {
        std::this_thread::sleep_for(pause_between);
        files = inspect_runtime_files(settings);
    }
    if (files.front().pid != 0 && files.front().state == FileState::running)
        return running_owner(files.front());
    if (const auto neighbour = running_neighbour(settings))
        return running_owner(*neighbour) + ": another server uses this directory";
    for (const FileReport& file : files)
        if (std::string why = obstacle(file); !why.empty()) return why;
    return {};
}

} // namespace orvane
