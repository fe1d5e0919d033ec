// The hosts that flags name.
#include "preflight/hosts.hpp"

#include "preflight/time_limit.hpp"
#include "text/lists.hpp"

#include <algorithm>
#include <span>

namespace orvane::preflight {
namespace {

using Clock = std::chrono::steady_clock;

bool is_ipv6(const std::string& address) {
    return address.find(':') != std::string::npos;
}
bool is_any(const std::string& address) {
    return address == "0.0.0.0" || address == "::";
}

} // namespace

std::optional<LookUp> Hosts::find(const std::u16string& host) {
    const auto [known, added] = known_.try_emplace(host);
    if (!added) return known->second;
    const auto started = Clock::now();
    known->second = within(left_, [host] { return look_up(host); });
    left_ -= std::min(left_, std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - started));
    return known->second;
}

std::vector<std::string> Hosts::addresses_of(const std::u16string& host, std::u16string_view flag,
                                             std::size_t position, Findings& findings) {
    const bool bracketed = host.size() > 2 && host.front() == u'[' && host.back() == u']';
    const auto found = find(bracketed ? host.substr(1, host.size() - 2) : host);
    if (!found) {
        findings.add(
            Kind::time_limit, flag,
            "the name servers did not answer within " + std::to_string(longest_look_up.count()) + " s",
            "Check that this machine can reach its name servers, or write the address instead of the name.",
            position);
        return {};
    }
    if (found->addresses.empty())
        findings.add(Kind::host_not_found, flag, "the host has no address: " + found->why,
                     "Check the spelling, the hosts file, and whether the name servers know the name.",
                     position);
    return found->addresses;
}

std::string with_port(const std::string& address, unsigned port) {
    return (is_ipv6(address) ? '[' + address + ']' : address) + ':' + std::to_string(port);
}

bool exclude_each_other(const std::string& one, const std::string& other) {
    if (is_ipv6(one) == is_ipv6(other)) return one == other || is_any(one) || is_any(other);
    return (one == "::" || other == "::") && ipv6_includes_ipv4();
}

std::string listed(const std::vector<std::string>& texts) {
    constexpr std::size_t most = 8;
    const std::string list = joined(std::span(texts).first(std::min(most, texts.size())));
    return texts.size() > most ? list + ", ..." : list;
}

} // namespace orvane::preflight
