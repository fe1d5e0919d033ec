// How old processes and files are on Windows.
#include "system/ages.hpp"

#include "system/windows/handle.hpp"

#include "qel/util/native_path.hpp"

namespace orvane {
namespace {

using std::chrono::milliseconds;

/// Longer ago than any file, of a process that is there and tells nothing more.
constexpr milliseconds forever = std::chrono::hours(24 * 365 * 1000);

milliseconds since(const FILETIME& then) {
    const auto ticks = [](const FILETIME& time) {
        return static_cast<long long>(ULARGE_INTEGER{{time.dwLowDateTime, time.dwHighDateTime}}.QuadPart);
    };
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    return milliseconds((ticks(now) - ticks(then)) / 10'000); // of 100 ns each
}

} // namespace

unsigned own_pid() {
    return GetCurrentProcessId();
}

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

std::optional<milliseconds> file_age(const qel::util::filesystem::Path& file) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    const auto name = qel::util::filesystem::native(file);
    if (!GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &data)) return std::nullopt;
    return since(data.ftLastWriteTime);
}

} // namespace orvane
