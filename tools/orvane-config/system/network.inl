// What both systems have in common: the end of their network.cpp, which begin with the sockets of each under the same names.
#include "text/lists.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <array>
#include <memory>

namespace orvane {
namespace {

using AddressList = std::unique_ptr<AddressInfo, Release>;

AddressList get_addresses(const std::string& host, const std::string& service, int flags, int& error) {
    const auto host_name = native(host), service_name = native(service);
    AddressInfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = flags;
    AddressInfo* list = nullptr;
    error =
        find_addresses(host_name.c_str(), service.empty() ? nullptr : service_name.c_str(), &hints, &list);
    return AddressList(error == 0 ? list : nullptr);
}

/// What the system makes of an address and a port.
AddressList numeric_address(const std::string& address, unsigned short port) {
    int error = 0;
    return get_addresses(address, std::to_string(port), AI_NUMERICHOST | AI_NUMERICSERV, error);
}

std::string numeric(const sockaddr* address, Length length) {
    std::array<char, NI_MAXHOST> text{};
    const int error =
        getnameinfo(address, length, text.data(), NI_MAXHOST, nullptr, 0, NI_NUMERICHOST | NI_NUMERICSERV);
    return error == 0 ? text.data() : "";
}

LookUp look_up(const std::string& host, int flags) {
    int error = 0;
    const AddressList list = get_addresses(host, "", flags, error);
    if (error != 0) return {{}, why_not_found(error)};
    LookUp found;
    for (const AddressInfo* one = list.get(); one != nullptr; one = one->ai_next) {
        std::string address = numeric(one->ai_addr, static_cast<Length>(one->ai_addrlen));
        if (!contains(found.addresses, address)) found.addresses.push_back(std::move(address));
    }
    return found;
}

BindTrial failed_with(int error) {
    return {outcome_of(error), text_of(error)};
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
    const Socket tried(where->ai_family);
    if (!tried.is_open()) return failed_with(last_error());
    const int yes = 1;
    setsockopt(tried.get(), SOL_SOCKET, option_to_bind, reinterpret_cast<const char*>(&yes), sizeof yes);
    if (bind(tried.get(), where->ai_addr, static_cast<Length>(where->ai_addrlen)) == 0)
        return {BindTrial::Outcome::free};
    return failed_with(last_error());
}

std::string accepts_connections(const std::vector<std::string>& addresses, unsigned short port,
                                std::chrono::milliseconds patience) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    std::vector<std::string> reasons;
    for (const std::string& address : addresses) {
        const AddressList where = numeric_address(address, port);
        const int error = where ? connect_until(*where, deadline) : no_such_address;
        if (error == 0) return "";
        reasons.push_back(address + ": " + text_of(error));
    }
    return joined(reasons);
}

bool has_ipv6() {
    return try_to_bind("::1", 0).outcome == BindTrial::Outcome::free;
}

} // namespace orvane
