// Processes, the console and a lock on Windows.
#include "system/host.hpp"

#include "qel/util/canonicalize.hpp"
#include "qel/util/native_path.hpp"

#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include <windows.h>

namespace orvane {
namespace {

using std::chrono::milliseconds;

/// Longer ago than any file, of a process that is there and tells nothing more.
constexpr milliseconds forever = std::chrono::hours(24 * 365 * 1000);

[[noreturn]] void fail(const std::string& what, DWORD error) {
    throw std::runtime_error(what + ": " + std::system_category().message(static_cast<int>(error)));
}

/// A handle that is closed with its owner.
class Handle {
public:
    Handle() = default;
    explicit Handle(HANDLE handle) : handle_(handle) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() {
        if (handle_ != nullptr) CloseHandle(handle_);
    }

    HANDLE get() const { return handle_; }
    void reset(HANDLE handle) { handle_ = handle; }

private:
    HANDLE handle_ = nullptr;
};

milliseconds since(const FILETIME& then) {
    const auto ticks = [](const FILETIME& time) {
        return static_cast<long long>(ULARGE_INTEGER{{time.dwLowDateTime, time.dwHighDateTime}}.QuadPart);
    };
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    return milliseconds((ticks(now) - ticks(then)) / 10'000); // of 100 ns each
}

} // namespace

std::optional<milliseconds> process_age(unsigned pid) {
    if (pid == 0) return std::nullopt;
    const Handle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION | SYNCHRONIZE, FALSE, pid));
    if (process.get() == nullptr) {
        if (GetLastError() == ERROR_ACCESS_DENIED) return forever;
        return std::nullopt;
    }
    if (WaitForSingleObject(process.get(), 0) == WAIT_OBJECT_0) return std::nullopt;
    FILETIME created{}, exited{}, kernel{}, user{};
    if (!GetProcessTimes(process.get(), &created, &exited, &kernel, &user)) return forever;
    return since(created);
}

std::optional<milliseconds> file_age(const Path& file) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    const auto name = qel::util::filesystem::native(file);
    if (!GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &data)) return std::nullopt;
    return since(data.ftLastWriteTime);
}

// --- DirectoryLock

struct DirectoryLock::State {
    Handle mutex;
};

namespace {

/// The same in every build of the tool, which std::hash is not: by it publishers keep out of each other's way. (FNV-1a)
std::uint64_t number_of(const Path& directory) {
    std::uint64_t number = 0xcbf29ce484222325;
    for (const char16_t unit : qel::util::filesystem::canonicalize(directory).text())
        number = (number ^ unit) * 0x100000001b3;
    return number;
}

} // namespace

// A directory cannot be locked itself; a mutex named for it serves all publishers of this machine.
DirectoryLock::DirectoryLock(const Path& directory, milliseconds patience)
    : state_(std::make_unique<State>()) {
    const std::wstring name = L"Global\\orvane-config-" + std::to_wstring(number_of(directory));
    state_->mutex.reset(CreateMutexW(nullptr, FALSE, name.c_str()));
    if (state_->mutex.get() == nullptr) fail("no lock", GetLastError());
    // One that was abandoned, by a publisher that was killed, is ours as well.
    const DWORD got = WaitForSingleObject(state_->mutex.get(), static_cast<DWORD>(patience.count()));
    if (got != WAIT_OBJECT_0 && got != WAIT_ABANDONED) fail("no lock", got);
}

DirectoryLock::~DirectoryLock() {
    ReleaseMutex(state_->mutex.get());
}

// --- ChildProcess

namespace {

/// Set when the console asks this process to end; the handler has no argument to carry it.
HANDLE time_to_go = nullptr;

/// Runs on a thread of its own. When it returns from a close, log-off or shutdown event, the process is
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
    if (state_->asked_to_go.get() == nullptr) fail("no event", GetLastError());
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
