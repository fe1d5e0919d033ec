// The verb `status`: is the server there, and where?
#include "printing/json.hpp"
#include "reference/reference.hpp"
#include "runtime/runtime_state.hpp"
#include "text/escape.hpp"
#include "verbs/given_ids.hpp"
#include "verbs/input.hpp"
#include "verbs/refusal.hpp"
#include "verbs/seconds.hpp"

#include "qel/i18n/convert.hpp"

#include <chrono>
#include <iomanip>
#include <ostream>
#include <thread>

namespace orvane {
namespace {

ExitCode code_for(FileState state) {
    switch (state) {
    case FileState::accepting:
    case FileState::running:
    case FileState::published:
        return ExitCode::done;
    case FileState::not_accepting:
    case FileState::not_published:
    case FileState::starting:
        return ExitCode::absent;
    case FileState::stale:
    case FileState::malformed:
        break;
    case FileState::unreadable:
        return ExitCode::failed_io;
    }
    return ExitCode::stale_or_malformed;
}

bool is_usable(FileState state) {
    return code_for(state) == ExitCode::done;
}

void print(const std::vector<FileReport>& files, std::ostream& out) {
    for (const FileReport& file : files) {
        out << std::left << std::setw(9) << file.name << std::setw(14) << to_text(file.state)
            << escape(file.text);
        if (!file.program.empty()) out << " (" << escape(file.program) << ')';
        if (file.expected_port != 0) out << " (the flags say port " << file.expected_port << ')';
        if (!is_usable(file.state)) // tells where to look
            out << (file.text.empty() ? "" : "  ") << escape(qel::i18n::ustring_to_utf8(file.path.text()));
        out << '\n';
    }
}

std::vector<FileReport> inspect(const Call& call, const qel::config::ServerSettings& settings) {
    auto files = inspect_runtime_files(settings);
    if (call.has(own("connect"))) connect_to_endpoints(files);
    return files;
}

/// Looks again until the server is there, or the time is over.
std::vector<FileReport> wait_for_files(const Call& call, const qel::config::ServerSettings& settings,
                                       double seconds) {
    using Clock = std::chrono::steady_clock;
    const auto deadline =
        Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
    auto files = inspect(call, settings);
    while (!files.empty() && !is_usable(worst_of(files)) && Clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        files = inspect(call, settings);
    }
    return files;
}

Input flags_of(const Call& call) {
    Input input = input_of(call);
    if (input.flags.empty())
        throw MisusedInPublic("give the flags of the server, or the file that has them: "
                              "its runtime files are where the flags say");
    return input;
}

} // namespace

ExitCode verb::status(const Call& call) {
    const double seconds = seconds_in(call, own("timeout"), "0");
    const Verdict verdict = judge(flags_of(call), false, ignored_warnings(call));
    if (const auto end = refusal(call, verdict)) return *end;

    auto files = wait_for_files(call, verdict.answer.settings, seconds);
    if (files.empty()) {
        call.err << "orvane-config: "
                 << with_flags("nothing to look for: give {pid_root}, or {endpoint_root} and a port") << '\n';
        return ExitCode::negative;
    }
    ExitCode code = code_for(worst_of(files));
    if (seconds > 0 && code != ExitCode::done) {
        call.err << "orvane-config: timed out after " << seconds
                 << " s waiting for the server; its files are now:\n";
        code = ExitCode::timed_out;
    }
    if (call.has(own("quiet")))
        std::erase_if(
            files, [](const FileReport& file) { return is_usable(file.state) && file.expected_port == 0; });
    if (call.wants_json() && !files.empty())
        call.out << status_json(files) << '\n';
    else
        print(files, call.out);
    return code;
}

} // namespace orvane
