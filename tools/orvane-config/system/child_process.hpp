// The command whose runtime files are published.
#pragma once

#include "text/tokens.hpp"

#include <chrono>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

namespace orvane {

/// Thrown when there is no such command, or it cannot be executed.
struct NotStarted : std::runtime_error {
    NotStarted(const std::string& command, const std::string& why, bool is_missing)
        : runtime_error("cannot start " + command + ": " + why), exit_code(is_missing ? 127 : 126) {}
    int exit_code; ///< that of shells
};

/// Runs a command, or nothing, until it is time to go. From construction to the end of this process, whatever asks it to
/// end (a signal that is not ignored, or the console) is kept back for run(): there may be files to remove.
class ChildProcess {
public:
    /// Creates a process for `command`, which does not run yet; without a command there is only this process.
    /// Throws NotStarted or another std::runtime_error.
    explicit ChildProcess(const Tokens& command);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    /// A command that has not run never will, and one that still runs is killed.
    ~ChildProcess();

    /// The command's process identifier, or without one this process's.
    unsigned pid() const;

    /// Lets the command run, passes signals on to it, and returns its exit code when it has ended; 128 and the
    /// signal's number when that ended it. Without a command, returns when it is time to go: 0 for the ordinary
    /// signals (INT, TERM, and whatever comes from a Windows console), 128 and the number for others. Meanwhile, calls
    /// `try_finish` again and again until it is. Throws NotStarted, or what `try_finish` throws.
    int run(const std::function<bool()>& try_finish);

    /// Ends the command if it runs: asks it to, and kills it after this time, or at once when this process is asked to end
    /// meanwhile. On Windows, where nothing can ask it, it is killed.
    void end(std::chrono::milliseconds patience);

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace orvane
