// The files of running and former servers.
#include "readiness/groups.hpp"

namespace orvane::readiness {

void look_at_runtime(const Context& context, Findings& findings) {
    const auto& settings = context.settings;
    if (settings.pid_root() || settings.endpoint_root())
        findings.add(Kind::not_looked_at, u"", "not looked at in this build");
}

} // namespace orvane::readiness
