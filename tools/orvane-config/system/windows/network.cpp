// What this machine's network tells, on Windows.
#include "system/network.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <system_error>

// In this order: the second undoes what the first would define otherwise.
#include <winsock2.h>
#include <ws2tcpip.h>

#include <iphlpapi.h>

namespace orvane {
namespace {

using std::chrono::milliseconds, std::chrono::steady_clock;

using AddressInfo = ADDRINFOW;
using Length = int;

struct Release {
    void operator()(ADDRINFOW* list) const { FreeAddrInfoW(list); }
};

/// Sockets work from the first use to the end of the process.
void start_sockets() {
    static const int started = [] {
        WSADATA data{};
        return WSAStartup(MAKEWORD(2, 2), &data);
    }();
    static_cast<void>(started);
}

/// For TCP, closed with its owner.
class Socket {
public:
    explicit Socket(int family) : handle_(socket(family, SOCK_STREAM, IPPROTO_TCP)) {}
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket() {
        if (is_open()) closesocket(handle_);
    }
    SOCKET get() const { return handle_; }
    bool is_open() const { return handle_ != INVALID_SOCKET; }

private:
    SOCKET handle_;
};

/// Without it, the port of another program could be had as well.
constexpr int option_to_bind = static_cast<int>(SO_EXCLUSIVEADDRUSE);
constexpr int no_such_address = WSAEADDRNOTAVAIL;

int last_error() {
    return WSAGetLastError();
}

std::string text_of(int error) {
    return std::system_category().message(error);
}

std::string why_not_found(int error) {
    return text_of(error);
}

std::wstring native(const std::string& text) {
    const std::u16string wide = qel::i18n::utf8_to_ustring(text);
    return {wide.begin(), wide.end()};
}

int find_addresses(const wchar_t* host, const wchar_t* service, const ADDRINFOW* hints, ADDRINFOW** list) {
    start_sockets();
    return GetAddrInfoW(host, service, hints, list);
}

/// 0 when the connection is made, else why not.
int connect_until(const AddressInfo& where, steady_clock::time_point deadline) {
    const Socket connection(where.ai_family);
    u_long without_waiting = 1;
    if (!connection.is_open() ||
        ioctlsocket(connection.get(), static_cast<long>(FIONBIO), &without_waiting) != 0)
        return WSAGetLastError();
    if (connect(connection.get(), where.ai_addr, static_cast<int>(where.ai_addrlen)) == 0) return 0;
    if (WSAGetLastError() != WSAEWOULDBLOCK) return WSAGetLastError();
    fd_set connected, failed;
    FD_ZERO(&connected);
    FD_ZERO(&failed);
    FD_SET(connection.get(), &connected);
    FD_SET(connection.get(), &failed);
    const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
    const auto patience = static_cast<long>(std::max<milliseconds::rep>(left.count(), 0));
    timeval longest{patience / 1000, patience % 1000 * 1000};
    const int ready = select(0, nullptr, &connected, &failed, &longest);
    if (ready == 0) return WSAETIMEDOUT;
    int error = WSAGetLastError();
    int size = sizeof error;
    if (ready > 0) getsockopt(connection.get(), SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&error), &size);
    return error;
}

/// Ports need no privilege here: access is denied where another program has the port for itself.
BindTrial::Outcome outcome_of(int error) {
    switch (error) {
    case WSAEADDRINUSE:
    case WSAEACCES:
        return BindTrial::Outcome::taken;
    case WSAEADDRNOTAVAIL:
    case WSAEAFNOSUPPORT:
        return BindTrial::Outcome::not_here;
    default:
        return BindTrial::Outcome::failed;
    }
}

} // namespace
} // namespace orvane

#include "system/network.inl"

namespace orvane {

std::vector<std::string> own_addresses() {
    start_sockets();
    constexpr ULONG flags = GAA_FLAG_SKIP_ANYCAST | GAA_FLAG_SKIP_MULTICAST | GAA_FLAG_SKIP_DNS_SERVER;
    ULONG size = 64 * 1024;
    std::vector<std::byte> buffer(size);
    auto* list = reinterpret_cast<IP_ADAPTER_ADDRESSES*>(buffer.data());
    if (GetAdaptersAddresses(AF_UNSPEC, flags, nullptr, list, &size) != NO_ERROR) return {};
    std::vector<std::string> addresses;
    for (; list != nullptr; list = list->Next)
        for (const auto* one = list->FirstUnicastAddress; one != nullptr; one = one->Next)
            addresses.push_back(numeric(one->Address.lpSockaddr, one->Address.iSockaddrLength));
    return addresses;
}

bool ipv6_includes_ipv4() {
    return false;
}

unsigned first_unprivileged_port() {
    return 0;
}

std::string how_to_give_the_privilege() {
    return "";
}

} // namespace orvane
