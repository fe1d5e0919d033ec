// Processes on Windows.
#include "server_startup.hpp"

#include <csignal>

#include <windows.h>

namespace server_startup {

unsigned own_process_id() {
    return GetCurrentProcessId();
}

bool is_running(unsigned process_id) {
    if (process_id == 0) return false;
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, process_id);
    if (process == nullptr) return GetLastError() == ERROR_ACCESS_DENIED;
    // A process that has ended can still be opened while someone has a handle to it.
    const bool running = WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    CloseHandle(process);
    return running;
}

std::vector<int> ending_signals() {
    std::vector<int> signals;
    // SIGBREAK is what closing the console sends.
    for (const int number : {SIGINT, SIGTERM, SIGBREAK}) {
        const auto before = std::signal(number, SIG_IGN);
        if (before == SIG_IGN) continue;
        std::signal(number, before);
        signals.push_back(number);
    }
    return signals;
}

} // namespace server_startup
