// What this machine's network tells, on Windows.
#include "system/network.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <array>
#include <memory>
#include <system_error>

// In this order: the second undoes what the first would define otherwise.
#include <winsock2.h>
#include <ws2tcpip.h>

#include <iphlpapi.h>

namespace orvane {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

std::string text_of(int error) {
    return std::system_category().message(error);
}

/// Sockets work from the first use to the end of the process.
void start_sockets() {
    static const int started = [] {
        WSADATA data{};
        return WSAStartup(MAKEWORD(2, 2), &data);
    }();
    static_cast<void>(started);
}

struct FreeNames {
    void operator()(ADDRINFOW* list) const { FreeAddrInfoW(list); }
};
using AddressList = std::unique_ptr<ADDRINFOW, FreeNames>;

/// A socket for TCP that is closed with its owner.
class Socket {
public:
    explicit Socket(int family) : handle_(socket(family, SOCK_STREAM, IPPROTO_TCP)) {}
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket() {
        if (handle_ != INVALID_SOCKET) closesocket(handle_);
    }
    SOCKET get() const { return handle_; }

private:
    SOCKET handle_;
};

AddressList get_addresses(const std::wstring& host, const std::wstring& service, int flags, int& error) {
    start_sockets();
    ADDRINFOW hints{};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = flags;
    ADDRINFOW* list = nullptr;
    error = GetAddrInfoW(host.c_str(), service.empty() ? nullptr : service.c_str(), &hints, &list);
    return AddressList(error == 0 ? list : nullptr);
}

std::string numeric(const sockaddr* address, int length) {
    std::array<char, NI_MAXHOST> text{};
    const int error = getnameinfo(address, length, text.data(), static_cast<DWORD>(text.size()), nullptr, 0,
                                  NI_NUMERICHOST | NI_NUMERICSERV);
    return error == 0 ? text.data() : "";
}

AddressList numeric_address(const std::string& address, unsigned short port) {
    int error = 0;
    return get_addresses(std::wstring(address.begin(), address.end()), std::to_wstring(port),
                         AI_NUMERICHOST | AI_NUMERICSERV, error);
}

LookUp look_up(const std::wstring& host, int flags) {
    int error = 0;
    const AddressList list = get_addresses(host, L"", flags, error);
    if (error != 0) return {{}, text_of(error)};
    LookUp found;
    for (const ADDRINFOW* one = list.get(); one != nullptr; one = one->ai_next) {
        const std::string address = numeric(one->ai_addr, static_cast<int>(one->ai_addrlen));
        if (std::find(found.addresses.begin(), found.addresses.end(), address) == found.addresses.end())
            found.addresses.push_back(address);
    }
    return found;
}

/// 0 when the connection is made, else why not.
int connect_until(const ADDRINFOW& where, Clock::time_point deadline) {
    const Socket connection(where.ai_family);
    u_long without_waiting = 1;
    if (connection.get() == INVALID_SOCKET ||
        ioctlsocket(connection.get(), static_cast<long>(FIONBIO), &without_waiting) != 0)
        return WSAGetLastError();
    if (connect(connection.get(), where.ai_addr, static_cast<int>(where.ai_addrlen)) == 0) return 0;
    if (WSAGetLastError() != WSAEWOULDBLOCK) return WSAGetLastError();
    fd_set connected, failed;
    FD_ZERO(&connected);
    FD_ZERO(&failed);
    FD_SET(connection.get(), &connected);
    FD_SET(connection.get(), &failed);
    const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
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

BindTrial failed_with(int error) {
    return {outcome_of(error), text_of(error)};
}

} // namespace

LookUp look_up(const std::u16string& host) {
    const std::wstring name(host.begin(), host.end());
    LookUp address = look_up(name, AI_NUMERICHOST);
    return address.addresses.empty() ? look_up(name, 0) : address;
}

BindTrial try_to_bind(const std::string& address, unsigned short port) {
    const AddressList where = numeric_address(address, port);
    if (!where) return {BindTrial::Outcome::failed, "not an address"};
    const Socket tried(where->ai_family);
    if (tried.get() == INVALID_SOCKET) return failed_with(WSAGetLastError());
    // Without it, the port of another program could be had as well.
    const DWORD yes = 1;
    setsockopt(tried.get(), SOL_SOCKET, static_cast<int>(SO_EXCLUSIVEADDRUSE),
               reinterpret_cast<const char*>(&yes), sizeof yes);
    if (bind(tried.get(), where->ai_addr, static_cast<int>(where->ai_addrlen)) == 0)
        return {BindTrial::Outcome::free};
    return failed_with(WSAGetLastError());
}

std::string accepts_connections(const std::vector<std::string>& addresses, unsigned short port,
                                milliseconds patience) {
    const auto deadline = Clock::now() + patience;
    std::string why;
    for (const std::string& address : addresses) {
        const AddressList where = numeric_address(address, port);
        const int error = where ? connect_until(*where, deadline) : WSAEADDRNOTAVAIL;
        if (error == 0) return "";
        why += (why.empty() ? "" : ", ") + address + ": " + text_of(error);
    }
    return why;
}

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

bool has_ipv6() {
    return try_to_bind("::1", 0).outcome == BindTrial::Outcome::free;
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
