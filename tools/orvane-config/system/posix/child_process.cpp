// The command whose runtime files are published, on POSIX.
#include "system/child_process.hpp"

#include "system/posix/arguments.hpp"
#include "system/posix/descriptor.hpp"

#include <array>
#include <cerrno>
#include <csignal>
#include <optional>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvane {
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

/// A terminal sends what is typed to the command as well, but tells only its first process that it closes.
bool is_to_be_passed_on(const siginfo_t& signal) {
    return signal.si_code != SI_KERNEL || signal.si_signo == SIGHUP;
}

constexpr timespec pause_between{0, 20'000'000};

} // namespace

struct ChildProcess::State {
    sigset_t waited_for{};
    sigset_t before{};
    /// The command's process; 0 without a command.
    pid_t child = 0;
    bool ended = false;
    std::optional<Arguments> command{};
    /// The child waits for a byte on the first pipe, and sends the error on the second if it cannot start the
    /// command.
    std::optional<Pipe> release{}, report{};

    /// In the child: waits to be released, then becomes the command.
    [[noreturn]] void become() {
        release->close_writer();
        prctl(PR_SET_NAME, command->name().c_str()); // who looks now sees whose pid this is
        char go = 0;
        if (read(release->reader(), &go, 1) != 1) _exit(0);
        sigprocmask(SIG_SETMASK, &before, nullptr);
        command->execute();
        const int error = errno;
        // Nothing can be done when the parent is gone.
        [[maybe_unused]] const auto written = write(report->writer(), &error, sizeof error);
        _exit(command->failure(error).exit_code);
    }

    void start() {
        if (write(release->writer(), "", 1) != 1) fail("the command's process is gone", errno);
        int error = 0;
        if (read(report->reader(), &error, sizeof error) == static_cast<ssize_t>(sizeof error))
            throw command->failure(error);
    }

    /// The next signal, or number 0 if none arrives in time.
    siginfo_t next_signal(const timespec* patience) const {
        siginfo_t signal{};
        return sigtimedwait(&waited_for, &signal, patience) < 0 ? siginfo_t{} : signal;
    }

    /// The exit code of the command, once it has ended.
    std::optional<int> exit_code() {
        int status = 0;
        if (waitpid(child, &status, WNOHANG) != child) return std::nullopt;
        ended = true;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

    /// What the signal means for this process; none while it has to go on.
    std::optional<int> answer(const siginfo_t& signal) {
        const int number = signal.si_signo;
        if (!command) {
            if (number == SIGCHLD) return std::nullopt;
            return number == SIGINT || number == SIGTERM ? 0 : 128 + number;
        }
        if (number == SIGCHLD) return exit_code();
        if (is_to_be_passed_on(signal)) kill(child, number);
        return std::nullopt;
    }
};

ChildProcess::ChildProcess(const Tokens& command) : state_(std::make_unique<State>()) {
    // Where the parent ignores it, the end of a child would be no signal.
    signal(SIGCHLD, SIG_DFL);
    state_->waited_for = kept_back();
    sigprocmask(SIG_BLOCK, &state_->waited_for, &state_->before);
    if (command.empty()) return;

    state_->command.emplace(command);
    state_->release.emplace();
    state_->report.emplace();
    state_->child = fork();
    if (state_->child < 0) fail("cannot create a process", errno);
    if (state_->child == 0) state_->become();
    state_->release->close_reader();
    state_->report->close_writer();
}

ChildProcess::~ChildProcess() {
    // A child that waits to be released sees the pipe close, and ends.
    state_->release.reset();
    end(std::chrono::milliseconds(0));
}

unsigned ChildProcess::pid() const {
    return static_cast<unsigned>(state_->command ? state_->child : getpid());
}

int ChildProcess::run(const std::function<bool()>& try_finish) {
    if (state_->command) state_->start();
    bool done = try_finish();
    while (true) {
        const siginfo_t signal = state_->next_signal(done ? nullptr : &pause_between);
        if (signal.si_signo == 0) {
            done = done || try_finish();
        } else if (const auto code = state_->answer(signal)) {
            return *code;
        }
    }
}

void ChildProcess::end(std::chrono::milliseconds patience) {
    if (state_->child <= 0 || state_->ended) return;
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + patience;
    kill(state_->child, SIGTERM);
    bool is_time = false;
    while (!state_->exit_code()) {
        const int signal = state_->next_signal(&pause_between).si_signo;
        is_time = is_time || (signal != 0 && signal != SIGCHLD) || Clock::now() >= deadline;
        if (is_time) kill(state_->child, SIGKILL);
    }
}

} // namespace orvane
