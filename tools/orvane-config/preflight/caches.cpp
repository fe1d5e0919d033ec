// The caches that the server starts or attaches to.
#include "preflight/groups.hpp"
#include "preflight/port_uses.hpp"
#include "reference/flag_texts.hpp"

#include <algorithm>

namespace orvane::preflight {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

/// For a connection to one cache, and to all of them.
constexpr milliseconds patience(2000), patience_with_all(10000);

/// All addresses that "localhost" has here: it is not known which one the cache takes.
void look_at_started(const PortUse& use, const Context& context, Findings& findings) {
    bool fine = !use.addresses.empty();
    std::string when;
    for (const std::string& address : use.addresses) {
        const BindTrial trial = try_port(use, address, context);
        const bool missing = trial.outcome == BindTrial::Outcome::not_here && use.addresses.size() > 1;
        fine = fine && (missing || can_be_taken(use, address, trial, context, findings));
        if (fine && !missing) when = std::max(when, trial.why);
    }
    if (fine)
        findings.add(when.empty() ? Kind::port_free : Kind::restarted, use.flag, "the port is free" + when,
                     "", use.position);
}

void contact(const PortUse& use, milliseconds& left, Findings& findings) {
    if (left <= milliseconds(0)) {
        findings.add(Kind::time_limit, use.flag, "not contacted, because the caches before it took too long",
                     "", use.position);
        return;
    }
    const auto started = Clock::now();
    const std::string why =
        accepts_connections(use.addresses, static_cast<unsigned short>(use.port), std::min(patience, left));
    left -= std::chrono::duration_cast<milliseconds>(Clock::now() - started);
    if (why.empty())
        findings.add(Kind::cache_answers, use.flag, "the cache accepts connections", "", use.position);
    else
        findings.add(Kind::cache_silent, use.flag, "no connection: " + why,
                     "Start the cache, or correct its host and port. A firewall may be in between.",
                     use.position);
}

/// What the settings and the line tell of one cache.
struct Given {
    const qel::config::CacheSettings& cache;
    PortUse use;
};

std::vector<Given> caches_of(const Context& context, Hosts& hosts, Findings& findings) {
    std::vector<Given> all;
    std::size_t started = 0, attached = 0;
    for (const auto& cache : context.settings.cache_list()->list()) {
        const auto flag = cache.manage() ? flag::start_cache : flag::attach_cache;
        const std::size_t position = cache.manage() ? started++ : attached++;
        all.push_back({cache, {flag, position, cache.port(), {}}});
        all.back().use.addresses = hosts.addresses_of(cache.host(), flag, position, findings);
    }
    return all;
}

} // namespace

void look_at_caches(const Context& context, Findings& findings) {
    if (!context.settings.cache_list()) return;
    Hosts hosts;
    Findings of_the_listeners; // which report it themselves
    auto earlier = ports_of_listeners(context, hosts, of_the_listeners);
    milliseconds left = patience_with_all;
    for (const auto& [cache, use] : caches_of(context, hosts, findings)) {
        if (use.addresses.empty()) continue;
        if (use.port == 0) {
            findings.add(Kind::no_such_port, use.flag, "no cache can be reached on port 0",
                         "Write the port of the cache.", use.position);
        } else if (cache.manage()) {
            look_at_started(use, context, findings);
            compare(use, earlier, context, findings);
            earlier.push_back(use);
        } else if (context.network) {
            contact(use, left, findings);
        } else {
            findings.add(Kind::cache_found, use.flag,
                         "the host has the address " + listed(use.addresses) + "; not contacted", "",
                         use.position);
        }
    }
}

} // namespace orvane::preflight
