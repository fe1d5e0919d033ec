// What this machine's network tells, on POSIX.
#include "system/network.hpp"

#include "system/posix/descriptor.hpp"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <memory>
#include <system_error>

#include <fcntl.h>
#include <ifaddrs.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>

namespace orvane {
namespace {

using std::chrono::milliseconds, std::chrono::steady_clock;

using AddressInfo = addrinfo;
using Length = socklen_t;

struct Release {
    void operator()(addrinfo* list) const { freeaddrinfo(list); }
    void operator()(ifaddrs* list) const { freeifaddrs(list); }
};

/// For TCP.
class Socket : public Descriptor {
public:
    explicit Socket(int family, int flags = 0)
        : Descriptor(socket(family, SOCK_STREAM | SOCK_CLOEXEC | flags, 0)) {}
    bool is_open() const { return get() >= 0; }
};

/// As servers do it: connections that have just ended do not keep the port.
constexpr int option_to_bind = SO_REUSEADDR;
constexpr int no_such_address = EADDRNOTAVAIL;

int last_error() {
    return errno;
}

std::string text_of(int error) {
    return std::generic_category().message(error);
}

std::string why_not_found(int error) {
    return error == EAI_SYSTEM ? text_of(errno) : gai_strerror(error);
}

const std::string& native(const std::string& text) {
    return text;
}

int find_addresses(const char* host, const char* service, const addrinfo* hints, addrinfo** list) {
    return getaddrinfo(host, service, hints, list);
}

/// 0 when the connection is made, else why not.
int connect_until(const addrinfo& where, steady_clock::time_point deadline) {
    const Socket connection(where.ai_family, SOCK_NONBLOCK);
    if (!connection.is_open()) return errno;
    if (connect(connection.get(), where.ai_addr, where.ai_addrlen) == 0) return 0;
    if (errno != EINPROGRESS) return errno;
    pollfd waited{connection.get(), POLLOUT, 0};
    const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
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
} // namespace orvane

#include "system/network.inl"

namespace orvane {

std::vector<std::string> own_addresses() {
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) != 0) return {};
    const std::unique_ptr<ifaddrs, Release> owner(list);
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
