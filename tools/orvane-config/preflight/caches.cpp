// The caches that the server starts or attaches to.
#include "preflight/groups.hpp"
#include "preflight/places.hpp"
#include "reference/flag_texts.hpp"

#include <algorithm>

namespace orvane::readiness {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

/// For a connection to one cache, and to all of them.
constexpr milliseconds patience(2000), patience_with_all(10000);

/// All addresses that "localhost" has here: it is not known which one the cache takes.
void look_at_started(const Place& place, Findings& findings) {
    bool fine = !place.addresses.empty();
    for (const std::string& address : place.addresses) {
        const BindTrial trial = try_to_bind(address, static_cast<unsigned short>(place.port));
        const bool missing = trial.outcome == BindTrial::Outcome::not_here && place.addresses.size() > 1;
        fine = fine && (missing || can_be_taken(place, address, findings));
    }
    if (fine) findings.add(Kind::port_free, place.flag, "the port is free", "", place.position);
}

void contact(const Place& place, milliseconds& left, Findings& findings) {
    if (left <= milliseconds(0)) {
        findings.add(Kind::time_limit, place.flag,
                     "not contacted, because the caches before it took too long", "", place.position);
        return;
    }
    const auto started = Clock::now();
    const std::string why = accepts_connections(place.addresses, static_cast<unsigned short>(place.port),
                                                std::min(patience, left));
    left -= std::chrono::duration_cast<milliseconds>(Clock::now() - started);
    if (why.empty())
        findings.add(Kind::cache_answers, place.flag, "the cache accepts connections", "", place.position);
    else
        findings.add(Kind::cache_silent, place.flag, "no connection: " + why,
                     "Start the cache, or correct its host and port. A firewall may be in between.",
                     place.position);
}

/// What the settings and the line tell of one cache.
struct Given {
    const qel::config::CacheSettings& cache;
    Place place;
};

std::vector<Given> caches_of(const Context& context, Hosts& hosts, Findings& findings) {
    std::vector<Given> all;
    std::size_t started = 0, attached = 0;
    for (const auto& cache : context.settings.cache_list()->list()) {
        const auto flag = cache.manage() ? flag::start_cache : flag::attach_cache;
        const std::size_t position = cache.manage() ? started++ : attached++;
        all.push_back({cache, {flag, position, cache.port(), {}}});
        all.back().place.addresses = hosts.addresses_of(cache.host(), flag, position, findings);
    }
    return all;
}

} // namespace

void look_at_caches(const Context& context, Findings& findings) {
    if (!context.settings.cache_list()) return;
    Hosts hosts;
    Findings of_the_listeners; // which report it themselves
    auto earlier = places_of_listeners(context, hosts, of_the_listeners);
    milliseconds left = patience_with_all;
    for (const auto& [cache, place] : caches_of(context, hosts, findings)) {
        if (place.addresses.empty()) continue;
        if (place.port == 0) {
            findings.add(Kind::no_such_port, place.flag, "no cache can be reached on port 0",
                         "Write the port of the cache.", place.position);
        } else if (cache.manage()) {
            look_at_started(place, findings);
            compare(place, earlier, context, findings);
            earlier.push_back(place);
        } else if (context.network) {
            contact(place, left, findings);
        } else {
            findings.add(Kind::cache_found, place.flag,
                         "the host has the address " + listed(place.addresses) + "; not contacted", "",
                         place.position);
        }
    }
}

} // namespace orvane::readiness
