// What this machine's network tells, on POSIX.
#include "system/network.hpp"

#include "qel/i18n/convert.hpp"
#include "system/posix/descriptor.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <memory>
#include <system_error>

#include <fcntl.h>
#include <ifaddrs.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace orvane {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

std::string text_of(int error) {
    return std::generic_category().message(error);
}

struct Close {
    void operator()(addrinfo* list) const { freeaddrinfo(list); }
    void operator()(ifaddrs* list) const { freeifaddrs(list); }
};
using AddressList = std::unique_ptr<addrinfo, Close>;

int tcp_socket(int family, int flags) {
    return socket(family, SOCK_STREAM | SOCK_CLOEXEC | flags, 0);
}

AddressList get_addresses(const std::string& host, const std::string& service, int flags, int& error) {
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = flags;
    addrinfo* list = nullptr;
    error = getaddrinfo(host.c_str(), service.empty() ? nullptr : service.c_str(), &hints, &list);
    return AddressList(error == 0 ? list : nullptr);
}

std::string numeric(const sockaddr* address, socklen_t length) {
    std::array<char, NI_MAXHOST> text{};
    const int error =
        getnameinfo(address, length, text.data(), text.size(), nullptr, 0, NI_NUMERICHOST | NI_NUMERICSERV);
    return error == 0 ? text.data() : "";
}

/// What the system makes of an address and a port.
AddressList numeric_address(const std::string& address, unsigned short port) {
    int error = 0;
    return get_addresses(address, std::to_string(port), AI_NUMERICHOST | AI_NUMERICSERV, error);
}

LookUp look_up(const std::string& host, int flags) {
    int error = 0;
    const AddressList list = get_addresses(host, "", flags, error);
    const int system_error = errno;
    if (error != 0) return {{}, error == EAI_SYSTEM ? text_of(system_error) : gai_strerror(error)};
    LookUp found;
    for (const addrinfo* one = list.get(); one != nullptr; one = one->ai_next) {
        const std::string address = numeric(one->ai_addr, one->ai_addrlen);
        if (std::find(found.addresses.begin(), found.addresses.end(), address) == found.addresses.end())
            found.addresses.push_back(address);
    }
    return found;
}

/// 0 when the connection is made, else why not.
int connect_until(const addrinfo& where, Clock::time_point deadline) {
    const Descriptor connection(tcp_socket(where.ai_family, SOCK_NONBLOCK));
    if (connection.get() < 0) return errno;
    if (connect(connection.get(), where.ai_addr, where.ai_addrlen) == 0) return 0;
    if (errno != EINPROGRESS) return errno;
    pollfd waited{connection.get(), POLLOUT, 0};
    const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
    const int ready = poll(&waited, 1, static_cast<int>(std::max<milliseconds::rep>(left.count(), 0)));
    if (ready == 0) return ETIMEDOUT;
    int error = errno;
    socklen_t size = sizeof error;
    if (ready > 0) getsockopt(connection.get(), SOL_SOCKET, SO_ERROR, &error, &size);
    return error;
}

BindTrial::Outcome outcome_of(int error) {
    switch (error) {
    case EADDRINUSE:
        return BindTrial::Outcome::taken;
    case EACCES:
    case EPERM:
        return BindTrial::Outcome::forbidden;
    case EADDRNOTAVAIL:
    case EAFNOSUPPORT:
        return BindTrial::Outcome::not_here;
    default:
        return BindTrial::Outcome::failed;
    }
}

unsigned setting(const char* file, unsigned otherwise) {
    unsigned value = otherwise;
    return std::ifstream(file) >> value ? value : otherwise;
}

} // namespace

LookUp look_up(const std::u16string& host) {
    const std::string name = qel::i18n::ustring_to_utf8(host);
    LookUp address = look_up(name, AI_NUMERICHOST);
    return address.addresses.empty() ? look_up(name, 0) : address;
}

BindTrial try_to_bind(const std::string& address, unsigned short port) {
    const AddressList where = numeric_address(address, port);
    if (!where) return {BindTrial::Outcome::failed, "not an address"};
    const Descriptor tried(tcp_socket(where->ai_family, 0));
    if (tried.get() < 0) return {outcome_of(errno), text_of(errno)};
    // As servers do it: connections that have just ended do not keep the port.
    const int yes = 1;
    setsockopt(tried.get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    if (bind(tried.get(), where->ai_addr, where->ai_addrlen) == 0) return {BindTrial::Outcome::free};
    return {outcome_of(errno), text_of(errno)};
}

std::string accepts_connections(const std::vector<std::string>& addresses, unsigned short port,
                                milliseconds patience) {
    const auto deadline = Clock::now() + patience;
    std::string why;
    for (const std::string& address : addresses) {
        const AddressList where = numeric_address(address, port);
        const int error = where ? connect_until(*where, deadline) : EADDRNOTAVAIL;
        if (error == 0) return "";
        why += (why.empty() ? "" : ", ") + address + ": " + text_of(error);
    }
    return why;
}

std::vector<std::string> own_addresses() {
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) != 0) return {};
    const std::unique_ptr<ifaddrs, Close> owner(list);
    std::vector<std::string> addresses;
    for (const ifaddrs* one = list; one != nullptr; one = one->ifa_next) {
        if (one->ifa_addr == nullptr) continue;
        const int family = one->ifa_addr->sa_family;
        if (family != AF_INET && family != AF_INET6) continue;
        addresses.push_back(
            numeric(one->ifa_addr, family == AF_INET ? sizeof(sockaddr_in) : sizeof(sockaddr_in6)));
    }
    return addresses;
}

bool has_ipv6() {
    return try_to_bind("::1", 0).outcome == BindTrial::Outcome::free;
}

bool ipv6_includes_ipv4() {
    return setting("/proc/sys/net/ipv6/bindv6only", 0) == 0;
}

unsigned first_unprivileged_port() {
    return setting("/proc/sys/net/ipv4/ip_unprivileged_port_start", 1024);
}

std::string how_to_give_the_privilege() {
    return "AmbientCapabilities=CAP_NET_BIND_SERVICE in the systemd unit, or setcap cap_net_bind_service=+ep "
           "on the "
           "server's program, or a lower net.ipv4.ip_unprivileged_port_start";
}

} // namespace orvane
