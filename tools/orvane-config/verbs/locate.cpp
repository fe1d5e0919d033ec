// The verb `locate`: is the server there, and where?
#include "printing/escape.hpp"
#include "runtime/runtime_state.hpp"
#include "verbs/options.hpp"
#include "verbs/parse_flags.hpp"

#include "qel/i18n/convert.hpp"

#include <boost/json.hpp>

#include <cmath>
#include <iomanip>
#include <ostream>
#include <thread>

namespace orvane {
namespace {

void print(const std::vector<FileReport>& files, std::ostream& out) {
    for (const FileReport& file : files) {
        out << std::left << std::setw(9) << file.name;
        if (file.text.empty()) {
            out << to_text(file.state) << '\n';
        } else {
            out << std::setw(14) << to_text(file.state) << escape(file.text) << '\n';
        }
    }
}

/// {"format": 1, "state": worst of all, "files": [{"name", "path", "state", "text", "pid" of main.pid}]}
void print_json(const std::vector<FileReport>& files, std::ostream& out) {
    boost::json::array entries;
    for (const FileReport& file : files) {
        boost::json::object entry{
            {"name", file.name},
            {"path", qel::i18n::ustring_to_utf8(file.path.text())},
            {"state", to_text(file.state)},
            {"text", qel::i18n::ustring_to_utf8(qel::i18n::utf8_to_ustring(file.text))}};
        if (file.pid != 0) entry["pid"] = file.pid;
        entries.push_back(std::move(entry));
    }
    out << boost::json::object{{"format", 1},
                               {"state", to_text(worst_of(files))},
                               {"files", std::move(entries)}}
        << '\n';
}

ExitCode code_for(FileState state) {
    switch (state) {
    case FileState::alive:
    case FileState::published:
        return ExitCode::done;
    case FileState::not_published:
    case FileState::starting:
        return ExitCode::not_published;
    case FileState::stale:
    case FileState::malformed:
        break;
    }
    return ExitCode::stale_or_malformed;
}

} // namespace

ExitCode locate(const Tokens& args, std::ostream& out, std::ostream& err) {
    double seconds = 0;
    bool json = false;
    CLI::App app("Reads the runtime files of the server with the given flags.", "orvane-config locate");
    app.add_option("--wait", // the tool's own option
                   seconds, "wait until the server is there, SECONDS at most")
        ->type_name("SECONDS")
        ->check(CLI::Range(0.0, 1e9));
    app.add_flag("--json", json, "answer in JSON");
    ExitCode code{};
    const auto flags = take_options(app, args, out, err, code);
    if (!flags) return code;
    if (std::isnan(seconds)) seconds = 0; // it is within every range

    qel::config::ServerSettings settings;
    if (parse_flags(*flags, settings, err)) return ExitCode::refused;

    using Clock = std::chrono::steady_clock;
    const auto deadline =
        Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
    auto files = inspect_runtime_files(settings);
    if (files.empty()) {
        err << "orvane-config: nothing to look for: no pid root, and no endpoint root with something in it\n";
        return ExitCode::refused;
    }
    code = code_for(worst_of(files));
    while (code != ExitCode::done && Clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        files = inspect_runtime_files(settings);
        code = code_for(worst_of(files));
    }
    if (seconds > 0 && code != ExitCode::done) {
        err << "orvane-config: the server did not come within " << seconds << " s\n";
        code = ExitCode::timed_out;
    }
    json ? print_json(files, out) : print(files, out);
    return code;
}

} // namespace orvane
