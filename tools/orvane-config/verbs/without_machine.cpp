// The verbs that need the machine on which the server runs, in a build without one.
#include "preflight/groups.hpp"
#include "verbs/call.hpp"

namespace orvane {
namespace {

[[noreturn]] void refuse() {
    throw MisusedInPublic("this build of orvane-config sees no machine: run it where the server runs");
}

} // namespace

ExitCode verb::preflight(const Call&) {
    refuse();
}

ExitCode verb::status(const Call&) {
    refuse();
}

ExitCode verb::exec(const Call&) {
    refuse();
}

ExitCode verb::publish(const Call&) {
    refuse();
}

// The table of groups names them; nobody calls them.
void preflight::look_at_directories(const Context&, Findings&) {}
void preflight::look_at_listeners(const Context&, Findings&) {}
void preflight::look_at_tls(const Context&, Findings&) {}
void preflight::look_at_programs(const Context&, Findings&) {}
void preflight::look_at_caches(const Context&, Findings&) {}
void preflight::look_at_resources(const Context&, Findings&) {}
void preflight::look_at_runtime(const Context&, Findings&) {}
void preflight::look_at_security(const Context&, Findings&) {}

} // namespace orvane
