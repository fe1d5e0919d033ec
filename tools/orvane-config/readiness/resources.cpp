// Memory limits against the memory of this machine.
#include "readiness/groups.hpp"

namespace orvane::readiness {

void look_at_resources(const Context& context, Findings& findings) {
    const auto& settings = context.settings;
    if (settings.worker_pool_settings() || settings.worker_restart_memory_limit() ||
        settings.server_memory_threshold())
        findings.add(Kind::not_looked_at, u"", "not looked at in this build");
}

} // namespace orvane::readiness
