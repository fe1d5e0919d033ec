// Processes, signals and a lock on POSIX.
#include "system/host.hpp"

#include "qel/i18n/convert.hpp"
#include "qel/util/native_path.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <ctime>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvane {
namespace {

using std::chrono::milliseconds;

milliseconds since(clockid_t clock, const timespec& then) {
    timespec now{};
    clock_gettime(clock, &now);
    return milliseconds((now.tv_sec - then.tv_sec) * 1000 + (now.tv_nsec - then.tv_nsec) / 1'000'000);
}

[[noreturn]] void fail(const std::string& what, int error) {
    throw std::runtime_error(what + ": " + std::generic_category().message(error));
}

/// Not kept back: those that stop and continue a process, and those that do nothing unless asked for.
constexpr std::array left_alone = {SIGKILL, SIGSTOP, SIGTSTP, SIGTTIN, SIGTTOU, SIGCONT, SIGWINCH, SIGURG};

/// Those that are ignored, as nohup has it, stay so.
sigset_t kept_back() {
    sigset_t set;
    sigfillset(&set);
    for (const int signal : left_alone)
        sigdelset(&set, signal);
    for (int signal = 1; signal <= SIGRTMAX; ++signal) {
        struct sigaction action {};
        if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) sigdelset(&set, signal);
    }
    return set;
}

} // namespace

std::optional<milliseconds> process_age(unsigned pid) {
    if (pid == 0 || pid > static_cast<unsigned>(INT_MAX)) return std::nullopt;
    if (kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH) return std::nullopt;
    std::ifstream in("/proc/" + std::to_string(pid) + "/stat");
    const std::string line{std::istreambuf_iterator<char>(in), {}};
    // The second field is the program's name in parentheses and may hold anything; the state is the third,
    // the start time in clock ticks since boot the 22nd.
    const auto name_end = line.rfind(')');
    if (name_end == std::string::npos) return std::chrono::hours(24 * 365 * 1000);
    std::istringstream rest(line.substr(name_end + 1));
    const std::vector<std::string> fields{std::istream_iterator<std::string>(rest), {}};
    if (fields.size() < 20 || fields[0] == "Z" || fields[0] == "X") return std::nullopt;
    const long long ticks = std::stoll(fields[19]);
    const long long per_second = sysconf(_SC_CLK_TCK);
    return since(CLOCK_BOOTTIME, {static_cast<time_t>(ticks / per_second),
                                  static_cast<long>(ticks % per_second * 1'000'000'000 / per_second)});
}

std::optional<milliseconds> file_age(const Path& file) {
    struct stat entry {};
    if (stat(qel::util::filesystem::native(file).c_str(), &entry) != 0) return std::nullopt;
    return since(CLOCK_REALTIME, entry.st_mtim);
}

// --- DirectoryLock

struct DirectoryLock::State {
    int descriptor;
};

DirectoryLock::DirectoryLock(const Path& directory, milliseconds patience)
    : state_(std::make_unique<State>()) {
    const auto name = qel::util::filesystem::native(directory);
    state_->descriptor = open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (state_->descriptor < 0) fail("error opening " + name.string(), errno);
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (flock(state_->descriptor, LOCK_EX | LOCK_NB) != 0) {
        const int error = errno;
        if (error == EWOULDBLOCK && std::chrono::steady_clock::now() < deadline) {
            std::this_thread::sleep_for(milliseconds(5));
        } else if (error != EINTR) {
            close(state_->descriptor);
            fail("error locking " + name.string(), error);
        }
    }
}

DirectoryLock::~DirectoryLock() {
    // A process created meanwhile still has the descriptor; closing ours alone would not unlock.
    flock(state_->descriptor, LOCK_UN);
    close(state_->descriptor);
}

// --- ChildProcess

struct ChildProcess::State {
    sigset_t waited_for;
    /// The command's process; 0 without a command.
    pid_t child = 0;
    bool ended = false;
    /// The child waits for a byte on the first pipe, and sends the error on the second if it cannot start the
    /// command.
    int release = -1;
    int report = -1;
};

namespace {

/// In the child: waits to be released, then becomes the command.
[[noreturn]] void become(const std::vector<char*>& command, const sigset_t& mask, int released, int report) {
    char go = 0;
    if (read(released, &go, 1) != 1) _exit(0);
    sigprocmask(SIG_SETMASK, &mask, nullptr);
    execvp(command[0], command.data());
    const int error = errno;
    // Nothing can be done when the parent is gone.
    [[maybe_unused]] const auto written = write(report, &error, sizeof error);
    _exit(error == ENOENT ? 127 : 126);
}

} // namespace

ChildProcess::ChildProcess(const Tokens& command) : state_(std::make_unique<State>()) {
    // Where the parent ignores it, the end of a child would be no signal.
    signal(SIGCHLD, SIG_DFL);
    state_->waited_for = kept_back();
    sigset_t before;
    sigprocmask(SIG_BLOCK, &state_->waited_for, &before);
    if (command.empty()) return;

    std::vector<std::string> texts;
    std::transform(command.begin(), command.end(), std::back_inserter(texts),
                   [](const std::u16string& token) { return qel::i18n::ustring_to_utf8(token); });
    std::vector<char*> words;
    words.reserve(texts.size() + 1);
    for (std::string& text : texts)
        words.push_back(text.data());
    words.push_back(nullptr);

    std::array<int, 2> release{};
    std::array<int, 2> report{};
    if (pipe2(release.data(), O_CLOEXEC) != 0) fail("no pipe", errno);
    if (pipe2(report.data(), O_CLOEXEC) != 0) fail("no pipe", errno);
    state_->release = release[1];
    state_->report = report[0];
    state_->child = fork();
    if (state_->child < 0) fail("no process", errno);
    if (state_->child == 0) {
        close(release[1]);
        become(words, before, release[0], report[1]);
    }
    close(release[0]);
    close(report[1]);
}

ChildProcess::~ChildProcess() {
    // A child that waits to be released sees the pipe close, and ends.
    if (state_->release >= 0) close(state_->release);
    if (state_->report >= 0) close(state_->report);
    if (state_->child > 0 && !state_->ended) waitpid(state_->child, nullptr, 0);
}

unsigned ChildProcess::pid() const {
    return static_cast<unsigned>(state_->child > 0 ? state_->child : getpid());
}

int ChildProcess::run() {
    if (state_->child > 0) {
        if (write(state_->release, "", 1) != 1) fail("the command's process is gone", errno);
        int error = 0;
        if (read(state_->report, &error, sizeof error) == static_cast<ssize_t>(sizeof error)) {
            fail("the command cannot be started", error);
        }
    }
    while (true) {
        siginfo_t info{};
        const int signal = sigwaitinfo(&state_->waited_for, &info);
        if (signal < 0) continue;
        if (state_->child == 0) {
            if (signal == SIGCHLD) continue;
            return signal == SIGINT || signal == SIGTERM ? 0 : 128 + signal;
        }
        if (signal != SIGCHLD) {
            // What the terminal sends, it sends to the command as well.
            if (info.si_code != SI_KERNEL) kill(state_->child, signal);
            continue;
        }
        int status = 0;
        if (waitpid(state_->child, &status, WNOHANG) != state_->child) continue;
        state_->ended = true;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
}

} // namespace orvane
