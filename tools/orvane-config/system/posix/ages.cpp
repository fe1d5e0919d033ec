// How old processes and files are on POSIX.
#include "system/ages.hpp"

#include "qel/util/native_path.hpp"

#include <cerrno>
#include <climits>
#include <csignal>
#include <ctime>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace orvane {
namespace {

using std::chrono::milliseconds;

milliseconds since(clockid_t clock, const timespec& then) {
    timespec now{};
    clock_gettime(clock, &now);
    return milliseconds((now.tv_sec - then.tv_sec) * 1000 + (now.tv_nsec - then.tv_nsec) / 1'000'000);
}

} // namespace

unsigned own_pid() {
    return static_cast<unsigned>(getpid());
}

std::optional<milliseconds> process_age(unsigned pid) {
    if (pid == 0 || pid > static_cast<unsigned>(INT_MAX)) return std::nullopt;
    const auto is_gone = [pid] { return kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH; };
    if (is_gone()) return std::nullopt;
    std::ifstream in("/proc/" + std::to_string(pid) + "/stat");
    std::string line;
    std::getline(in, line, '\0');
    // The second field is the program's name in parentheses and may hold anything; the state is the third,
    // the start time in clock ticks since boot the 22nd.
    const auto name_end = line.rfind(')');
    // It may have ended since; else the system does not tell.
    if (name_end == std::string::npos && is_gone()) return std::nullopt;
    if (name_end == std::string::npos) return std::chrono::hours(24 * 365 * 1000);
    std::istringstream rest(line.substr(name_end + 1));
    const std::vector<std::string> fields{std::istream_iterator<std::string>(rest), {}};
    if (fields.size() < 20 || fields[0] == "Z" || fields[0] == "X") return std::nullopt;
    const long long ticks = std::stoll(fields[19]);
    const long long per_second = sysconf(_SC_CLK_TCK);
    return since(CLOCK_BOOTTIME, {static_cast<time_t>(ticks / per_second),
                                  static_cast<long>(ticks % per_second * 1'000'000'000 / per_second)});
}

std::optional<milliseconds> file_age(const qel::util::filesystem::Path& file) {
    struct stat entry {};
    if (stat(qel::util::filesystem::native(file).c_str(), &entry) != 0) return std::nullopt;
    return since(CLOCK_REALTIME, entry.st_mtim);
}

} // namespace orvane
