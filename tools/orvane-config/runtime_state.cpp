// What the runtime files say of a server, and how far they are to be believed.
#include "runtime_state.hpp"

#include "qel/config/endpoint_files.hpp"
#include "qel/config/pid_files.hpp"
#include "qel/i18n/convert.hpp"
#include "qel/util/native_path.hpp"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace orvane {
namespace {

using qel::config::HTTPProtocol;
using qel::config::ServerSettings;

/// A server's files are far shorter; host names end at 255 bytes.
constexpr std::uintmax_t longest_file = 4096;

/// A new pid is not given again at once, and clocks and file times are not exact.
constexpr std::chrono::milliseconds clock_slack(1000);

bool is_number(std::string_view text, unsigned long long largest) {
    unsigned long long value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() && value >= 1 && value <= largest;
}

/// Everything but the blanks at the end, which an editor or a shell may have added.
std::string_view without_line_end(std::string_view text) {
    const auto last = text.find_last_not_of(" \t\r\n");
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

FileReport malformed(FileReport file, std::string why) {
    file.state = FileState::malformed;
    file.text = std::move(why);
    return file;
}

/// Looks at the file before the library reads it: the library reads whatever is there, to its end, and takes
/// a number from the front of it. State `alive` means only that the content is a server's, as far as it goes
/// by itself.
FileReport inspect(const Path& root, const char* name, bool (*is_well_formed)(std::string_view)) {
    using qel::i18n::operator/;
    FileReport file{name, root / qel::i18n::ascii_to_ustring(name)};
    const auto native = qel::util::filesystem::native(file.path);
    std::error_code error;
    const auto status = std::filesystem::status(native, error);
    if (status.type() == std::filesystem::file_type::not_found) return file;
    if (status.type() == std::filesystem::file_type::none) return malformed(file, error.message());
    // A pipe or a device could keep a reader for ever.
    if (status.type() != std::filesystem::file_type::regular) return malformed(file, "not a regular file");

    std::ifstream in(native, std::ios_base::binary);
    if (!in) {
        // It may have been withdrawn since.
        if (!std::filesystem::exists(native, error)) return file;
        return malformed(file, "cannot be opened");
    }
    std::string content(longest_file + 1, '\0');
    in.read(content.data(), static_cast<std::streamsize>(content.size()));
    content.resize(static_cast<std::size_t>(in.gcount()));
    if (in.bad()) return malformed(file, "cannot be read");
    if (content.empty()) {
        file.state = FileState::starting;
        return file;
    }
    if (content.size() > longest_file) return malformed(file, "longer than any server's");
    const std::string_view text = without_line_end(content);
    if (!is_well_formed(text)) return malformed(file, "holds no such value");
    file.state = FileState::alive;
    file.text = text;
    return file;
}

bool is_pid(std::string_view text) {
    return is_number(text, 0xFFFFFFFF);
}

/// Something, a colon, and a port that can be connected to.
bool is_endpoint(std::string_view text) {
    const auto colon = text.rfind(':');
    return colon != std::string_view::npos && colon != 0 && is_number(text.substr(colon + 1), 65535);
}

FileReport inspect_pid_file(const ServerSettings& settings) {
    FileReport file = inspect(*settings.pid_root(), "main.pid", is_pid);
    if (file.state != FileState::alive) return file;
    const auto written = file_age(file.path);
    file.pid = qel::config::read_master_pid(settings);
    const auto started = process_age(file.pid);
    if (!written || !started) {
        file.state = FileState::stale;
        file.text += " (no such process)";
    } else if (*started + clock_slack < *written) {
        file.state = FileState::stale;
        file.text += " (the process of that number started after the file was written)";
    }
    return file;
}

} // namespace

const char* to_text(FileState state) {
    switch (state) {
    case FileState::alive:
        return "alive";
    case FileState::not_published:
        return "not published";
    case FileState::starting:
        return "starting";
    case FileState::stale:
        return "stale";
    case FileState::malformed:
        return "malformed";
    }
    return "";
}

std::vector<FileReport> inspect_runtime_files(const ServerSettings& settings) {
    std::vector<FileReport> files;
    if (settings.pid_root()) files.push_back(inspect_pid_file(settings));
    const bool gone = !files.empty() && files.front().state == FileState::stale;
    if (settings.endpoint_root()) {
        const Path& root = *settings.endpoint_root();
        if (settings.control_port()) files.push_back(inspect(root, "control", is_endpoint));
        if (settings.http()) files.push_back(inspect(root, "http", is_endpoint));
        if (settings.https()) files.push_back(inspect(root, "https", is_endpoint));
    }
    // Whoever published the pid published the endpoints.
    for (FileReport& file : files) {
        if (gone && file.state == FileState::alive) file.state = FileState::stale;
    }
    return files;
}

FileState worst_of(const std::vector<FileReport>& files) {
    FileState worst = FileState::alive;
    for (const FileReport& file : files)
        worst = std::max(worst, file.state);
    return worst;
}

} // namespace orvane
