// The command whose runtime files are published, on Windows.
#include "system/child_process.hpp"

#include "system/windows/handle.hpp"
#include "text/windows_word.hpp"

#include "qel/i18n/convert.hpp"

#include <string>
#include <string_view>

namespace orvane {

namespace {

/// Set when the console asks this process to end; the handler has no argument to carry it.
HANDLE time_to_go = nullptr;

/// Runs on a separate thread. When it returns from a close, log-off or shutdown event, the process is
/// ended, so it stays until main has cleaned up and ended the process itself.
BOOL WINAPI on_console_event(DWORD event) {
    SetEvent(time_to_go);
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(INFINITE);
    return TRUE;
}

/// The line of a command. A batch file gets no word in which cmd.exe would find a variable or another command.
std::u16string line_of(const Tokens& command) {
    const bool is_batch = is_batch_file(command[0]);
    std::u16string line;
    for (const std::u16string& word : command) {
        if (is_batch && !is_safe_for_cmd(word))
            throw NotStarted(qel::i18n::ustring_to_utf8(command[0]),
                             "it is a batch file, and cmd.exe would not pass this on as it is: " +
                                 qel::i18n::ustring_to_utf8(word) + "; give the program that it starts",
                             false);
        // cmd.exe also separates words at commas and the like.
        line += (line.empty() ? u"" : u" ") + windows_word(word, is_batch);
    }
    return line;
}

/// A process of the job may leave it if it asks to.
void limit(HANDLE job, DWORD flags) {
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = flags | JOB_OBJECT_LIMIT_BREAKAWAY_OK;
    if (!SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits))
        fail("cannot limit a job", GetLastError());
}

} // namespace

struct ChildProcess::State {
    Handle asked_to_go;
    Handle job; ///< the command and what it starts
    Handle process;
    Handle thread;
    DWORD pid = GetCurrentProcessId();

    /// Creates the command's process, which does not run yet.
    void create(const Tokens& command) {
        const std::u16string text = line_of(command);
        job.reset(CreateJobObjectW(nullptr, nullptr));
        // However this process ends, the system then closes its handles.
        limit(job.get(), JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE);
        std::wstring line(text.begin(), text.end());
        STARTUPINFOW start{};
        start.cb = sizeof start;
        PROCESS_INFORMATION child{};
        if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr, nullptr,
                            &start, &child)) {
            const DWORD error = GetLastError();
            throw NotStarted(qel::i18n::ustring_to_utf8(command[0]),
                             std::system_category().message(static_cast<int>(error)),
                             error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND);
        }
        process.reset(child.hProcess);
        thread.reset(child.hThread);
        pid = child.dwProcessId;
        if (AssignProcessToJobObject(job.get(), process.get())) return;
        const DWORD error = GetLastError();
        TerminateProcess(process.get(), 1);
        fail("cannot tie the command to this process", error);
    }
};

ChildProcess::ChildProcess(const Tokens& command) : state_(std::make_unique<State>()) {
    state_->asked_to_go.reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (state_->asked_to_go.get() == nullptr) fail("cannot create an event", GetLastError());
    time_to_go = state_->asked_to_go.get();
    SetConsoleCtrlHandler(on_console_event, TRUE);
    if (!command.empty()) state_->create(command);
}

ChildProcess::~ChildProcess() {
    end(std::chrono::milliseconds(0));
    // The event stays valid for the handler, which is not removed: it keeps a closing console waiting to the
    // end.
    state_->asked_to_go.reset(nullptr);
}

unsigned ChildProcess::pid() const {
    return state_->pid;
}

int ChildProcess::run(const std::function<bool()>& try_finish) {
    const bool has_command = state_->process.get() != nullptr;
    if (has_command && ResumeThread(state_->thread.get()) == static_cast<DWORD>(-1)) {
        fail("the command cannot be started", GetLastError());
    }
    // What the console asks of this process, it asks of the command as well: its end is waited for in any
    // case.
    const HANDLE end = has_command ? state_->process.get() : state_->asked_to_go.get();
    bool done = try_finish();
    while (WaitForSingleObject(end, done ? INFINITE : 20) == WAIT_TIMEOUT)
        done = try_finish();
    if (!has_command) return 0;
    DWORD code = 0;
    if (!GetExitCodeProcess(state_->process.get(), &code))
        fail("the command's exit code is not known", GetLastError());
    // A command that only starts others has done its work.
    limit(state_->job.get(), 0);
    return static_cast<int>(code);
}

// One that a driver holds is not waited for.
void ChildProcess::end(std::chrono::milliseconds) {
    const HANDLE process = state_->process.get();
    if (process == nullptr || WaitForSingleObject(process, 0) == WAIT_OBJECT_0) return;
    TerminateJobObject(state_->job.get(), 1);
    WaitForSingleObject(process, 5000);
}

} // namespace orvane
