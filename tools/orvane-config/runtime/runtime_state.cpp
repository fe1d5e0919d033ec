// What the runtime files say about a server, and whether they can be trusted.
#include "runtime/runtime_state.hpp"

#include "runtime/endpoint.hpp"
#include "system/ages.hpp"
#include "system/bounded_file.hpp"
#include "system/directory_lock.hpp"
#include "system/network.hpp"
#include "system/process_line.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <limits>
#include <string_view>

namespace orvane {
namespace {

using qel::config::ServerSettings;

/// A server's files are far shorter; host names end at 255 bytes.
constexpr std::size_t longest_file = 4096;

/// A pid is not reused at once, and clocks and file times are not exact.
constexpr std::chrono::milliseconds clock_slack(1000);

/// Everything but the blanks at the end, which an editor or a shell may have added.
std::string_view without_line_end(std::string_view text) {
    const auto last = text.find_last_not_of(" \t\r\n");
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

FileReport with_state(FileReport file, FileState state, std::string why) {
    file.state = state;
    file.text = std::move(why);
    return file;
}

/// What the file says. The library's readers would take whatever is there, and a number from the front of it. State
/// `published` means that the content is a server's.
FileReport inspect(const Path& root, const char* name, bool (*is_well_formed)(std::string_view)) {
    using qel::i18n::operator/;
    using Outcome = BoundedFile::Outcome;
    FileReport file{name, root / qel::i18n::ascii_to_ustring(name)};
    BoundedFile found = read_bounded(file.path, longest_file, Reads::once);
    const std::string_view text = without_line_end(found.text);
    switch (found.outcome) {
    case Outcome::missing:
        return file;
    case Outcome::no_access:
    case Outcome::failed:
        return with_state(std::move(file), FileState::unreadable, std::move(found.text));
    case Outcome::not_a_file:
        return with_state(std::move(file), FileState::malformed, "not a regular file");
    case Outcome::too_large:
        return with_state(std::move(file), FileState::malformed, "longer than any that a server writes");
    case Outcome::read:
        break;
    }
    if (found.text.empty()) return with_state(std::move(file), FileState::starting, {});
    if (!is_well_formed(text))
        return with_state(std::move(file), FileState::malformed, "not what a server writes");
    return with_state(std::move(file), FileState::published, std::string(text));
}

unsigned pid_in(std::string_view text) {
    return number_in(text, std::numeric_limits<unsigned>::max());
}
bool is_pid(std::string_view text) {
    return pid_in(text) != 0;
}

bool is_control_endpoint(std::string_view text) {
    return endpoint_in(text).has_value();
}
// As the library reads it: the host ends at the first colon.
bool is_http_endpoint(std::string_view text) {
    return is_control_endpoint(text) && text.find(':') == text.rfind(':');
}

/// An endpoint that the flags set up; with port 0, the server chooses one.
FileReport inspect_endpoint(const Path& root, const char* name, unsigned port,
                            bool (*is_well_formed)(std::string_view)) {
    FileReport file = inspect(root, name, is_well_formed);
    const bool is_other = !file.text.ends_with(":" + std::to_string(port));
    if (file.state == FileState::published && is_other) file.expected_port = port;
    return file;
}

FileReport inspect_pid_file(const Path& root) {
    FileReport file = inspect(root, "main.pid", is_pid);
    if (file.state != FileState::published) return file;
    file.pid = pid_in(file.text);
    const auto written = file_age(file.path);
    const auto started = process_age(file.pid);
    const bool is_gone = !written || !started;
    const bool is_later = !is_gone && *started < *written - clock_slack;
    // A server that had our number was killed before we started, as process 1 of a container that starts again.
    const bool runs = !is_gone && !is_later && file.pid != own_pid();
    if (runs || is_answered_for(file.path, file.pid)) {
        file.state = FileState::running;
        file.elsewhere = is_gone || is_later;
        if (file.elsewhere)
            file.text += " (not a process here, but its publisher is running)";
        else
            file.program = process_name(file.pid);
    } else {
        file.state = FileState::stale;
        file.text += is_gone ? " (no such process)"
                             : " (the process with that number started after the file was written)";
    }
    return file;
}

} // namespace

const char* to_text(FileState state) {
    switch (state) {
    case FileState::accepting:
        return "accepting";
    case FileState::running:
        return "running";
    case FileState::published:
        return "published";
    case FileState::not_accepting:
        return "not accepting";
    case FileState::not_published:
        return "not published";
    case FileState::starting:
        return "starting";
    case FileState::stale:
        return "stale";
    case FileState::malformed:
        return "malformed";
    case FileState::unreadable:
        return "unreadable";
    }
    return "";
}

std::string owner_of(const FileReport& pid_file) {
    return (pid_file.elsewhere ? "the publisher of process " : "process ") + std::to_string(pid_file.pid);
}

std::vector<FileReport> inspect_runtime_files(const ServerSettings& settings) {
    std::vector<FileReport> files;
    if (settings.pid_root()) files.push_back(inspect_pid_file(*settings.pid_root()));
    const FileState process = files.empty() ? FileState::published : files.front().state;
    if (settings.endpoint_root()) {
        const Path& root = *settings.endpoint_root();
        if (const auto& port = settings.control_port())
            files.push_back(
                inspect_endpoint(root, "control", static_cast<unsigned>(*port), is_control_endpoint));
        if (const auto& http = settings.http())
            files.push_back(inspect_endpoint(root, "http", http->port(), is_http_endpoint));
        if (const auto& https = settings.https())
            files.push_back(inspect_endpoint(root, "https", https->http().port(), is_http_endpoint));
    }
    // Whoever published the pid published the endpoints.
    if (process == FileState::running || process == FileState::stale) {
        for (FileReport& file : files) {
            if (file.state == FileState::published) file.state = process;
        }
    }
    return files;
}

std::optional<FileReport> running_neighbour(const ServerSettings& settings) {
    if (!settings.endpoint_root() || settings.pid_root() == settings.endpoint_root()) return std::nullopt;
    FileReport file = inspect_pid_file(*settings.endpoint_root());
    return file.state == FileState::running ? std::optional(std::move(file)) : std::nullopt;
}

void connect_to_endpoints(std::vector<FileReport>& files) {
    constexpr std::chrono::seconds patience(1);
    for (FileReport& file : files) {
        const auto endpoint = endpoint_in(file.text);
        const bool has_ended = file.state != FileState::running && file.state != FileState::published;
        if (has_ended || !endpoint) continue;
        LookUp found = look_up(qel::i18n::utf8_to_ustring(endpoint->host));
        if (!found.addresses.empty())
            found.why = accepts_connections(found.addresses, endpoint->port, patience);
        file.state = found.why.empty() ? FileState::accepting : FileState::not_accepting;
        if (!found.why.empty()) file.text += " (" + found.why + ")";
    }
}

FileState worst_of(const std::vector<FileReport>& files) {
    FileState worst = FileState::accepting;
    for (const FileReport& file : files)
        worst = std::max(worst, file.state);
    return worst;
}

} // namespace orvane
