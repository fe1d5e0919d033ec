// How much memory this process may use, on Linux.
#include "system/memory.hpp"

#include <fstream>

#include <sys/sysinfo.h>

namespace orvane {
namespace {

/// What version 1 writes for "no limit" is the largest number of whole pages.
constexpr std::uint64_t no_limit = std::uint64_t{1} << 62;

std::optional<std::uint64_t> number_in(const std::string& file) {
    std::ifstream in(file);
    std::uint64_t number = 0;
    if (!(in >> number) || number >= no_limit) return std::nullopt; // "max", too
    return number;
}

/// The lowest limit of the group and of those above it.
void apply_limits(Memory& memory, const std::string& mount, std::string group, const char* file) {
    for (;; group.erase(group.rfind('/'))) {
        const std::string name = mount + group + "/" + file;
        if (const auto limit = number_in(name); limit && limit < memory.limit.value_or(no_limit)) {
            memory.limit = limit;
            memory.limited_by = name;
        }
        if (group.rfind('/') == group.npos) return;
    }
}

} // namespace

std::optional<Memory> memory_here() {
    struct sysinfo machine {};
    if (sysinfo(&machine) != 0) return std::nullopt;
    Memory memory{std::uint64_t{machine.totalram} * machine.mem_unit,
                  std::uint64_t{machine.totalswap} * machine.mem_unit};
    std::ifstream groups("/proc/self/cgroup");
    // number:controllers:/group; version 2 has the number 0 and names no controllers.
    for (std::string line; std::getline(groups, line);) {
        const auto first = line.find(':'), second = line.find(':', first + 1);
        if (second == line.npos) continue;
        const std::string controllers = line.substr(first + 1, second - first - 1);
        std::string group = line.substr(second + 1);
        if (group == "/") group.clear();
        if (controllers.empty()) apply_limits(memory, "/sys/fs/cgroup", group, "memory.max");
        if (controllers == "memory")
            apply_limits(memory, "/sys/fs/cgroup/memory", group, "memory.limit_in_bytes");
    }
    return memory;
}

} // namespace orvane
