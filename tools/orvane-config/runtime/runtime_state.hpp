// What the runtime files say about a server, and whether they can be trusted.
#pragma once

#include "qel/config/server_settings.hpp"
#include "qel/util/path.hpp"

#include <optional>
#include <string>
#include <vector>

namespace orvane {

using qel::util::filesystem::Path;

/// In the order from good to bad: a whole server is in the worst state of its files.
enum class FileState {
    accepting, ///< published, and somebody accepts connections there
    running, ///< published, and the process that published it runs, or its `publish`; nobody has connected to it
    published,     ///< published, and there is no pid file to tell whether that process runs
    not_accepting, ///< published, and nobody accepts connections there
    not_published, ///< there is no such file
    starting,      ///< the file is there and still empty
    stale,         ///< published, but that process is gone
    malformed,     ///< not what a server writes; nothing is taken from it
    unreadable,    ///< this user may not read it, or the system cannot
};

const char* to_text(FileState state);

/// One runtime file of a server.
struct FileReport {
    std::string name;
    Path path;
    FileState state = FileState::not_published;
    /// What the file says, or what is wrong with it; empty when there is nothing to say.
    std::string text{};
    /// The process identifier, of "main.pid" only and where it is one; else 0.
    unsigned pid = 0;
    /// The name of that process if it runs here and the system tells; whoever else has the number has another name.
    std::string program{};
    /// The port that the flags say, of an endpoint whose file says another; else 0.
    unsigned expected_port = 0;
    /// Running, but this process cannot see it: its `publish` answers for it, from another pid namespace.
    bool elsewhere = false;
};

/// Whose process a pid file names, and who is running.
std::string owner_of(const FileReport& pid_file);

/// The files that a server with these settings publishes, "main.pid" first.
std::vector<FileReport> inspect_runtime_files(const qel::config::ServerSettings& settings);

/// The pid file that another server keeps in the endpoint root; none when that is the pid root as well, or the other server
/// is not running.
std::optional<FileReport> running_neighbour(const qel::config::ServerSettings& settings);

/// Connects to the endpoints of which it is not known that their server has ended.
void connect_to_endpoints(std::vector<FileReport>& files);

/// The worst state among the files.
FileState worst_of(const std::vector<FileReport>& files);

} // namespace orvane
