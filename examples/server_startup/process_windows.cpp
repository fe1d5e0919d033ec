// Processes on Windows.
#include "server_startup.hpp"

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

} // namespace server_startup
