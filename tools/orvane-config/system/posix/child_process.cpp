// The command whose runtime files are published, on POSIX.
#include "system/child_process.hpp"

#include "system/posix/arguments.hpp"

#include <array>
#include <cerrno>
#include <csignal>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvane {

struct ChildProcess::State {
    sigset_t waited_for;
    /// The command's process; 0 without a command.
    pid_t child = 0;
    bool ended = false;
    std::string name;
    /// The child waits for a byte on the first pipe, and sends the error on the second if it cannot start the
    /// command.
    int release = -1;
    int report = -1;
};

namespace {

[[noreturn]] void fail(const std::string& what, int error) {
    throw std::system_error(error, std::generic_category(), what);
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

/// In the child: waits to be released, then becomes the command.
[[noreturn]] void become(const Arguments& command, const sigset_t& mask, int released, int report) {
    char go = 0;
    if (read(released, &go, 1) != 1) _exit(0);
    sigprocmask(SIG_SETMASK, &mask, nullptr);
    execvp(command.program().c_str(), command.words());
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

    const Arguments arguments(command);
    state_->name = arguments.program();

    std::array<int, 2> release{};
    std::array<int, 2> report{};
    if (pipe2(release.data(), O_CLOEXEC) != 0) fail("cannot create a pipe", errno);
    if (pipe2(report.data(), O_CLOEXEC) != 0) fail("cannot create a pipe", errno);
    state_->release = release[1];
    state_->report = report[0];
    state_->child = fork();
    if (state_->child < 0) fail("cannot create a process", errno);
    if (state_->child == 0) {
        close(release[1]);
        become(arguments, before, release[0], report[1]);
    }
    close(release[0]);
    close(report[1]);
}

ChildProcess::~ChildProcess() {
    // A child that waits to be released sees the pipe close, and ends.
    if (state_->release >= 0) close(state_->release);
    if (state_->report >= 0) close(state_->report);
    if (state_->child > 0 && !state_->ended) {
        kill(state_->child, SIGTERM);
        waitpid(state_->child, nullptr, 0);
    }
}

unsigned ChildProcess::pid() const {
    return static_cast<unsigned>(state_->child > 0 ? state_->child : getpid());
}

int ChildProcess::run(const std::function<bool()>& try_finish) {
    if (state_->child > 0) {
        if (write(state_->release, "", 1) != 1) fail("the command's process is gone", errno);
        int error = 0;
        if (read(state_->report, &error, sizeof error) == static_cast<ssize_t>(sizeof error)) {
            throw NotStarted(state_->name, std::generic_category().message(error), error == ENOENT);
        }
    }
    constexpr timespec pause{0, 20'000'000};
    bool done = try_finish();
    while (true) {
        siginfo_t info{};
        const int signal = sigtimedwait(&state_->waited_for, &info, done ? nullptr : &pause);
        if (signal < 0) {
            done = done || try_finish();
            continue;
        }
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
