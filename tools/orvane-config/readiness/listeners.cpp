// The addresses on which the server listens.
#include "readiness/groups.hpp"

namespace orvane::readiness {

void look_at_listeners(const Context& context, Findings& findings) {
    const auto& settings = context.settings;
    if (settings.http() || settings.https() || settings.control_port())
        findings.add(Kind::not_looked_at, u"", "not looked at in this build");
}

} // namespace orvane::readiness
