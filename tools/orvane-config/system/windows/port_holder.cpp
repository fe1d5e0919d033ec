// Who listens on a port, on Windows.
#include "system/port_holder.hpp"

// In this order: what it includes must come before <windows.h>.
#include <winsock2.h>
#include <ws2tcpip.h>

#include "system/process_line.hpp"

#include <array>
#include <cstddef>

#include <iphlpapi.h>

namespace orvane {
namespace {

/// The table grows while it is read, so it is given more room than it asked for.
constexpr ULONG slack = 4096;
constexpr ULONG largest_table = 64 * 1024 * 1024;

std::vector<std::byte> table_of(ULONG family) {
    std::vector<std::byte> table(slack);
    ULONG size = slack;
    while (GetExtendedTcpTable(table.data(), &size, FALSE, family, TCP_TABLE_OWNER_PID_LISTENER, 0) ==
           ERROR_INSUFFICIENT_BUFFER) {
        if (size > largest_table) return {};
        size += slack;
        table.resize(size);
    }
    return table;
}

void add(int family, void* address, DWORD pid, std::vector<PortHolder>& holders) {
    std::array<char, INET6_ADDRSTRLEN> text{};
    if (inet_ntop(family, address, text.data(), text.size()) == nullptr) return;
    holders.push_back({text.data(), pid, process_name(pid)});
}

/// The tables have the port in the network's byte order.
bool is(unsigned short port, DWORD row_port) {
    return ntohs(static_cast<u_short>(row_port)) == port;
}

} // namespace

std::vector<PortHolder> holders_of(unsigned short port) {
    std::vector<PortHolder> holders;
    auto ipv4 = table_of(AF_INET);
    auto* rows = reinterpret_cast<MIB_TCPTABLE_OWNER_PID*>(ipv4.data());
    for (DWORD i = 0; !ipv4.empty() && i != rows->dwNumEntries; ++i)
        if (is(port, rows->table[i].dwLocalPort))
            add(AF_INET, &rows->table[i].dwLocalAddr, rows->table[i].dwOwningPid, holders);
    auto ipv6 = table_of(AF_INET6);
    auto* rows6 = reinterpret_cast<MIB_TCP6TABLE_OWNER_PID*>(ipv6.data());
    for (DWORD i = 0; !ipv6.empty() && i != rows6->dwNumEntries; ++i)
        if (is(port, rows6->table[i].dwLocalPort))
            add(AF_INET6, rows6->table[i].ucLocalAddr, rows6->table[i].dwOwningPid, holders);
    return holders;
}

std::string how_to_find_the_holder(unsigned short port) {
    return "netstat -abno as administrator, and look for :" + std::to_string(port);
}

} // namespace orvane
