// The command whose runtime files are published, on Windows.
#include "system/child_process.hpp"

#include "system/windows/handle.hpp"

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

/// One argument as the C runtime's parser reads it back.
std::wstring as_argument(std::u16string_view token) {
    std::wstring text = L"\"";
    std::size_t backslashes = 0;
    for (const char16_t unit : token) {
        // Backslashes count double only where a quote follows.
        if (unit == u'"') text.append(backslashes + 1, L'\\');
        backslashes = unit == u'\\' ? backslashes + 1 : 0;
        text += static_cast<wchar_t>(unit);
    }
    text.append(backslashes, L'\\');
    return text + L"\"";
}

} // namespace

struct ChildProcess::State {
    Handle asked_to_go;
    Handle process;
    Handle thread;
    DWORD pid = GetCurrentProcessId();
    bool runs = false;
};

ChildProcess::ChildProcess(const Tokens& command) : state_(std::make_unique<State>()) {
    state_->asked_to_go.reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (state_->asked_to_go.get() == nullptr) fail("cannot create an event", GetLastError());
    time_to_go = state_->asked_to_go.get();
    SetConsoleCtrlHandler(on_console_event, TRUE);
    if (command.empty()) return;

    std::wstring line;
    for (const std::u16string& token : command)
        line += (line.empty() ? L"" : L" ") + as_argument(token);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION child{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr, nullptr,
                        &start, &child)) {
        fail("the command cannot be started", GetLastError());
    }
    state_->process.reset(child.hProcess);
    state_->thread.reset(child.hThread);
    state_->pid = child.dwProcessId;
}

ChildProcess::~ChildProcess() {
    if (state_->process.get() != nullptr && !state_->runs) TerminateProcess(state_->process.get(), 1);
    // The event stays valid for the handler, which is not removed: it keeps a closing console waiting to the
    // end.
    state_->asked_to_go.reset(nullptr);
}

unsigned ChildProcess::pid() const {
    return state_->pid;
}

int ChildProcess::run() {
    if (state_->process.get() == nullptr) {
        WaitForSingleObject(state_->asked_to_go.get(), INFINITE);
        return 0;
    }
    if (ResumeThread(state_->thread.get()) == static_cast<DWORD>(-1)) {
        fail("the command cannot be started", GetLastError());
    }
    state_->runs = true;
    // What the console asks of this process, it asks of the command as well: its end is waited for in any
    // case.
    WaitForSingleObject(state_->process.get(), INFINITE);
    DWORD code = 0;
    if (!GetExitCodeProcess(state_->process.get(), &code))
        fail("the command's exit code is not known", GetLastError());
    return static_cast<int>(code);
}

} // namespace orvane
