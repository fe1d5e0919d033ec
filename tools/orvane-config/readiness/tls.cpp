// Keys, certificates, and what the HTTPS listener offers.
#include "readiness/groups.hpp"

namespace orvane::readiness {

void look_at_tls(const Context& context, Findings& findings) {
    const auto& settings = context.settings;
    if (settings.https()) findings.add(Kind::not_looked_at, u"", "not looked at in this build");
}

} // namespace orvane::readiness
