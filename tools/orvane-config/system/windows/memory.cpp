// How much memory this process may use, on Windows.
#include "system/memory.hpp"

#include <windows.h>

namespace orvane {

std::optional<Memory> memory_here() {
    MEMORYSTATUSEX machine{};
    machine.dwLength = sizeof machine;
    if (!GlobalMemoryStatusEx(&machine)) return std::nullopt;
    Memory memory{machine.ullTotalPhys, 0};
    if (machine.ullTotalPageFile > machine.ullTotalPhys)
        memory.swap = machine.ullTotalPageFile - machine.ullTotalPhys; // that number includes both
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION job{};
    if (QueryInformationJobObject(nullptr, JobObjectExtendedLimitInformation, &job, sizeof job, nullptr) &&
        (job.BasicLimitInformation.LimitFlags & JOB_OBJECT_LIMIT_JOB_MEMORY) != 0) {
        memory.limit = job.JobMemoryLimit;
        memory.limited_by = "the job object of this process";
    }
    return memory;
}

} // namespace orvane
