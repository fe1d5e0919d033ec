// The problem report and the usage text.
#include "qel/config/report.hpp"

#include "qel/config/option.hpp"
#include "qel/i18n/convert.hpp"

#include <ostream>

namespace qel::config {
namespace {

using i18n::ustring_to_utf8;
using Flag = std::u16string (*)();

/// "[", the flag, then `between` and a second flag if there is one, and the closing fragment.
struct UsageRow {
    Flag flag;
    const char* close;
    const char* between = nullptr;
    Flag second = nullptr;
};

// Two things look like mistakes but are intended: the memory limit leaves its bracket open, because the interval in the
// line below belongs to it and closes both; and num_workers appears twice, as the alternative to wait and alone.
// clang-format off
constexpr UsageRow usage_rows[] = {
    {option::extract_root,                         " <zarc-unpack-dir>]\n"},
    {option::wait,                                 " <pool-size>]\n", " | ",                       option::num_workers},
    {option::http,                                 " <command>]]\n",  " [<host-name>:]<port> [",   option::driver},
    {option::https,                                " <command>]]\n",  " [<host-name>:]<port> [",   option::driver},
    {option::num_threads,                          " <pool-size>]\n"},
    {option::num_workers,                          " <pool-size>]\n"},
    {option::log_root,                             " <log-files-dir>]\n"},
    {option::log_severity,                         " <level>]\n"},
    {option::endpoint_root,                        " <endpoint-files-dir>]\n"},
    {option::pid_root,                             " <pid-files-dir>]\n"},
    {option::socket_root,                          " <socket-files-dir>]\n"},
    {option::lumo_root,                            " <TELVAR-Runtime-install-dir>]\n"},
    {option::merge_worker_streams,                 "]\n"},
    {option::worker_restart_interval,              " <worker-process-restart-time-interval>]\n"},
    {option::worker_restart_memory_limit,          " <bytes>\n"},
    {option::worker_restart_memory_limit_interval, " <time-duration>]]\n"},
    {option::request_size_limit,                   " <bytes>]\n"},
};
// clang-format on

} // namespace

void report_problems(const ProblemList& problems, const FlagSet& flags, std::ostream& out) {
    out << "One or more configuration problem(s) detected: " << std::endl;
    for (const std::u16string& problem : problems)
        out << ustring_to_utf8(problem) << std::endl;
    out << std::endl;
    out << "Please fix the following flag(s) before restarting: " << std::endl;
    for (const std::u16string& flag : flags)
        out << ustring_to_utf8(flag) << std::endl;
}

std::ostream& usage(const std::u16string& program, std::ostream& out) {
    const std::string name = ustring_to_utf8(program);
    // The brackets of the other lines are aligned with the first flag. The width counts bytes, not characters.
    const std::string indent(std::string("Usage: ").size() + name.size() + 1, ' ');
    const std::string first =
        "Usage: " + name + " " + ustring_to_utf8(option::auto_deploy_root()) + " <zarc-source-dir>\n";
    out << first;
    for (const UsageRow& row : usage_rows) {
        out << indent << "[" << ustring_to_utf8(row.flag());
        if (row.second != nullptr) out << row.between << ustring_to_utf8(row.second());
        out << row.close;
    }
    return out;
}

} // namespace qel::config
