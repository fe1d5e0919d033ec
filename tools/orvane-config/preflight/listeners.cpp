// The addresses on which the server listens.
#include "preflight/groups.hpp"
#include "preflight/port_uses.hpp"
#include "reference/flag_texts.hpp"

namespace orvane::preflight {
namespace {

constexpr unsigned largest_port = 65535;

/// A server may take only the first address of a host, so the others are not needed.
void look_at_the_others(const PortUse& use, const Context& context, Findings& findings) {
    const bool everywhere = use.addresses.front() == "0.0.0.0";
    for (std::size_t i = 1; i != use.addresses.size(); ++i) {
        const std::string& address = use.addresses[i];
        const BindTrial trial = try_port(use, address, context);
        // Without IPv6, all addresses are those of IPv4.
        if (trial.outcome == BindTrial::Outcome::free ||
            (everywhere && trial.outcome == BindTrial::Outcome::not_here))
            continue;
        findings.add(Kind::other_address, use.flag,
                     with_port(use.addresses.front(), use.port) + " can be bound, but not " +
                         with_port(address, use.port) + ", another address of the host: " + trial.why,
                     everywhere ? "Clients that use IPv6 reach another program. Choose another port."
                                : "Write the address instead of the name.");
        return;
    }
}

void look_at_one(const PortUse& use, const Context& context, Findings& findings) {
    if (use.addresses.empty()) return;
    if (use.port > largest_port) {
        findings.add(Kind::no_such_port, use.flag, "there is no port " + std::to_string(use.port),
                     "Choose a port up to 65535.");
        return;
    }
    const std::string& first = use.addresses.front();
    const BindTrial trial = try_port(use, first, context);
    if (!can_be_taken(use, first, trial, context, findings)) return;
    findings.add(trial.why.empty() ? Kind::port_free : Kind::restarted, use.flag,
                 with_port(first, use.port) + " can be bound" + trial.why);
    if (use.flag != flag::control_port && use.port != 0) look_at_the_others(use, context, findings);
}

/// Readers of the file take the host up to the first colon.
void look_at_endpoint(std::u16string_view flag, const qel::config::HttpSettings& listener,
                      Findings& findings) {
    if (listener.host() && listener.host()->find(u':') != std::u16string::npos)
        findings.add(Kind::unreadable_endpoint, flag,
                     "the endpoint file would hold an address with colons, which its readers cannot read",
                     "Write a host name with this address, or only the port.");
}

} // namespace

void look_at_listeners(const Context& context, Findings& findings) {
    const auto& settings = context.settings;
    if (settings.endpoint_root() && settings.http()) look_at_endpoint(flag::http, *settings.http(), findings);
    if (settings.endpoint_root() && settings.https())
        look_at_endpoint(flag::https, settings.https()->http(), findings);
    Hosts hosts;
    std::vector<PortUse> earlier;
    for (const PortUse& use : ports_of_listeners(context, hosts, findings)) {
        look_at_one(use, context, findings);
        compare(use, earlier, context, findings);
        earlier.push_back(use);
    }
}

} // namespace orvane::preflight
