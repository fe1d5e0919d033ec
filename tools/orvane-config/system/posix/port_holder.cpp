// Who listens on a port, on POSIX: told where the system has Linux's /proc.
#include "system/port_holder.hpp"

#include "system/posix/user.hpp"
#include "system/process_line.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string_view>
#include <system_error>

#include <arpa/inet.h>

namespace orvane {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

/// Bounds for machines with more sockets and processes than anyone would wait for.
constexpr unsigned most_rows = 100'000;
constexpr std::chrono::milliseconds longest_search(1000);

/// The holders by the descriptor text of their socket, which is all that the tables tell of the process.
using BySocket = std::map<std::string, PortHolder>;

/// The kernel prints an address as words in the machine's order.
std::string address_in(std::string_view digits) {
    std::array<std::uint32_t, 4> words{};
    for (std::size_t i = 0; i != words.size() && digits.size() >= 8; ++i, digits.remove_prefix(8))
        std::from_chars(digits.data(), digits.data() + 8, words[i], 16);
    return {reinterpret_cast<const char*>(words.data()), sizeof words};
}

/// Takes the listeners of one table, which stand before all connections.
void read_table(const char* file, int family, unsigned short port, BySocket& holders) {
    constexpr std::string_view listening = "0A";
    std::ifstream in(file);
    std::string line;
    std::getline(in, line);
    for (unsigned rows = 0; rows != most_rows && std::getline(in, line); ++rows) {
        std::istringstream words(line);
        std::string number, local, remote, state, queues, timer, retransmits, user, timeout, inode;
        words >> number >> local >> remote >> state >> queues >> timer >> retransmits >> user >> timeout >>
            inode;
        if (state != listening) return;
        const auto colon = local.find(':');
        if (colon == std::string::npos || std::strtoul(local.c_str() + colon + 1, nullptr, 16) != port)
            continue;
        std::array<char, INET6_ADDRSTRLEN> text{};
        const std::string address = address_in(std::string_view(local).substr(0, colon));
        if (inet_ntop(family, address.data(), text.data(), text.size()) == nullptr) continue;
        holders["socket:[" + inode + "]"] = {text.data(), 0, "", user, 0};
    }
}

/// The first line of a file of a process.
std::string line_of(const fs::path& file) {
    std::ifstream in(file);
    std::string line;
    std::getline(in, line);
    return line;
}

/// The fourth word; the second is the program's name in parentheses, and may have any characters.
unsigned parent_in(const std::string& stat) {
    unsigned parent = 0;
    char state = 0;
    std::istringstream(stat.substr(std::min(stat.size(), stat.rfind(')') + 1))) >> state >> parent;
    return parent;
}

/// Takes the sockets of one process that are among the holders'.
void look_into(const fs::path& process, BySocket& holders) {
    std::error_code error;
    for (fs::directory_iterator one(process / "fd", error), end; !error && one != end; one.increment(error)) {
        std::error_code gone;
        const auto holder = holders.find(fs::read_symlink(one->path(), gone).string());
        if (holder == holders.end() || holder->second.pid != 0) continue;
        const std::string number = process.filename().string();
        std::from_chars(number.data(), number.data() + number.size(), holder->second.pid);
        holder->second.program = process_name(holder->second.pid);
        holder->second.parent = parent_in(line_of(process / "stat"));
    }
}

/// A socket that several processes share is said to be that of the first, which is mostly the one that made it.
void find_processes(BySocket& holders) {
    const auto deadline = Clock::now() + longest_search;
    std::error_code error;
    for (fs::directory_iterator one("/proc", error), end; !error && one != end && Clock::now() < deadline;
         one.increment(error))
        if (one->path().filename().string().find_first_not_of("0123456789") == std::string::npos)
            look_into(one->path(), holders);
}

} // namespace

std::vector<PortHolder> holders_of(unsigned short port) {
    BySocket holders;
    read_table("/proc/net/tcp", AF_INET, port, holders);
    read_table("/proc/net/tcp6", AF_INET6, port, holders);
    if (!holders.empty()) find_processes(holders);
    std::vector<PortHolder> all;
    for (auto& [socket, holder] : holders) {
        holder.user = name_of_user(static_cast<uid_t>(std::strtoul(holder.user.c_str(), nullptr, 10)));
        all.push_back(std::move(holder));
    }
    return all;
}

std::string how_to_find_the_holder(unsigned short port) {
    return "ss -ltnp 'sport = :" + std::to_string(port) + "' as root";
}

} // namespace orvane
