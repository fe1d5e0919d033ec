// The ports that a server takes.
#include "preflight/port_uses.hpp"

#include "reference/flag_texts.hpp"
#include "system/port_holder.hpp"
#include "text/quoting.hpp"

#include <algorithm>

namespace orvane::preflight {
namespace {

using Outcome = BindTrial::Outcome;

PortUse use_of(std::u16string_view flag, const qel::config::HttpSettings& listener, Hosts& hosts,
               Findings& findings) {
    PortUse use{flag, last_given, listener.port(), {"0.0.0.0", "::"}};
    if (listener.host() && !listener.host()->empty())
        use.addresses = hosts.addresses_of(*listener.host(), flag, last_given, findings);
    return use;
}

/// Of those who have the port, those that are in the way.
std::vector<PortHolder> holders_at(const std::string& address, unsigned short port) {
    std::vector<PortHolder> holders = holders_of(port);
    std::erase_if(holders, [&](const PortHolder& one) { return !exclude_each_other(address, one.address); });
    return holders;
}

/// Whether the server that ends has the port, or a process that it has started, such as a cache.
bool ends_before(const std::string& address, unsigned short port, unsigned server) {
    const auto ends = [&](const PortHolder& one) { return one.pid == server || one.parent == server; };
    const std::vector<PortHolder> holders = holders_at(address, port);
    return server != 0 && !holders.empty() && std::ranges::all_of(holders, ends);
}

/// " by orvane (process 4711), which listens on 0.0.0.0:9910", as far as the system tells.
std::string by_whom(const PortHolder* holder, const std::string& address, unsigned short port) {
    if (holder == nullptr) return {};
    std::string by = holder->program.empty() ? " by a process" : " by " + holder->program;
    if (holder->pid != 0)
        by += " (process " + std::to_string(holder->pid) + ")";
    else if (!holder->user.empty())
        by += " of user " + holder->user;
    return holder->address == address ? by : by + ", which listens on " + with_port(holder->address, port);
}

void report_taken(const PortUse& use, const std::string& address, const Context& context,
                  Findings& findings) {
    const auto port = static_cast<unsigned short>(use.port);
    const auto holders = holders_at(address, port);
    const PortHolder* const holder = holders.empty() ? nullptr : &holders.front();
    const bool unknown = holder == nullptr || holder->pid == 0;
    const std::string what = with_port(address, port) + " is taken" + by_whom(holder, address, port);
    if (unknown && context.ends_before != 0)
        return findings.add(Kind::cannot_tell, use.flag,
                            what + "; it may be the server that is to be restarted",
                            "Run preflight as the server's user, or as root.", use.position);
    std::string advice = "Stop that program, or choose another port.";
    if (use.flag == flag::start_cache)
        advice +=
            " If it is the cache, use " + orvane::shown(std::u16string(flag::attach_cache)) + " instead.";
    if (unknown) advice += " To see which program it is, run " + how_to_find_the_holder(port) + ".";
    findings.add(Kind::port_taken, use.flag, what, advice, use.position);
}

void report_forbidden(const PortUse& use, const std::string& where, const std::string& why,
                      Findings& findings) {
    const unsigned first = first_unprivileged_port();
    if (use.port < first)
        findings.add(Kind::privileged_port, use.flag,
                     "this user lacks the privilege to bind to " + where + ", which all ports below " +
                         std::to_string(first) + " need",
                     "Choose another port, or give the server the privilege: " + how_to_give_the_privilege() +
                         ".",
                     use.position);
    else
        findings.add(Kind::cannot_bind, use.flag, "this user may not bind to " + where + ": " + why,
                     "Check whether a security policy of this machine restricts the port.", use.position);
}

void report_not_here(const PortUse& use, const std::string& address, Findings& findings) {
    if (address.find(':') != std::string::npos && !has_ipv6())
        findings.add(Kind::no_ipv6, use.flag, "this machine has no IPv6, so it cannot have " + address,
                     "Write an IPv4 address, or enable IPv6.", use.position);
    else
        findings.add(Kind::foreign_address, use.flag, address + " is not an address of this machine",
                     "Use one that it has (" + listed(own_addresses()) +
                         "), or write only the port, to listen on all of them.",
                     use.position);
}

/// The occurrence that a use is from, as the user wrote it.
std::string as_given(const PortUse& use, const Context& context) {
    const Occurrence* const given = occurrence_of({{}, use.flag, {}, {}, use.position}, context);
    return given == nullptr ? "another listener" : as_given(*given, context);
}

} // namespace

std::vector<PortUse> ports_of_listeners(const Context& context, Hosts& hosts, Findings& findings) {
    const auto& settings = context.settings;
    std::vector<PortUse> uses;
    // A threshold alone makes a listener too.
    const auto http_flag =
        occurrence_of({{}, flag::http}, context) ? flag::http : flag::http_linger_threshold;
    if (const auto& http = settings.http()) uses.push_back(use_of(http_flag, *http, hosts, findings));
    if (const auto& https = settings.https())
        uses.push_back(use_of(flag::https, https->http(), hosts, findings));
    // For this machine only, as its clients expect; but nothing keeps a server from taking the port on all addresses.
    if (const auto& port = settings.control_port())
        uses.push_back({flag::control_port, last_given, *port, {"127.0.0.1", "0.0.0.0"}});
    return uses;
}

BindTrial try_port(const PortUse& use, const std::string& address, const Context& context) {
    const auto port = static_cast<unsigned short>(use.port);
    BindTrial trial = try_to_bind(address, port);
    if (trial.outcome != Outcome::taken || !ends_before(address, port, context.ends_before)) return trial;
    return {Outcome::free,
            " when the server that has it ends (process " + std::to_string(context.ends_before) + ")"};
}

bool can_be_taken(const PortUse& use, const std::string& address, const BindTrial& trial,
                  const Context& context, Findings& findings) {
    const std::string where = with_port(address, use.port);
    switch (trial.outcome) {
    case Outcome::free:
        return true;
    case Outcome::taken:
        report_taken(use, address, context, findings);
        return false;
    case Outcome::forbidden:
        report_forbidden(use, where, trial.why, findings);
        return false;
    case Outcome::not_here:
        report_not_here(use, address, findings);
        return false;
    case Outcome::failed:
        break;
    }
    findings.add(Kind::cannot_bind, use.flag, where + " cannot be bound: " + trial.why, "", use.position);
    return false;
}

void compare(const PortUse& use, const std::vector<PortUse>& earlier, const Context& context,
             Findings& findings) {
    for (const PortUse& other : earlier) {
        if (use.port == 0 || use.port != other.port || use.addresses.empty() || other.addresses.empty())
            continue;
        const std::string &ours = use.addresses.front(), &theirs = other.addresses.front();
        const auto among_the_others = [&](const std::string& one) {
            return std::ranges::any_of(other.addresses,
                                       [&](const auto& two) { return exclude_each_other(one, two); });
        };
        if (exclude_each_other(ours, theirs))
            findings.add(Kind::address_clash, use.flag,
                         "cannot bind to " + with_port(ours, use.port) + ": " + as_given(other, context) +
                             " uses " + with_port(theirs, other.port),
                         "Choose another port for one of them.", use.position);
        else if (std::ranges::any_of(use.addresses, among_the_others))
            findings.add(Kind::possible_clash, use.flag,
                         as_given(other, context) + " uses the same port, and the hosts share some addresses",
                         "Choose another port for one of them, or write an address for each.", use.position);
        else
            continue;
        return;
    }
}

} // namespace orvane::preflight
