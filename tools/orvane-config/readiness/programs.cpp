// The programs that the server starts.
#include "readiness/groups.hpp"

namespace orvane::readiness {

void look_at_programs(const Context& context, Findings& findings) {
    const auto& settings = context.settings;
    if (settings.driver() || !settings.log_handler().empty())
        findings.add(Kind::not_looked_at, u"", "not looked at in this build");
}

} // namespace orvane::readiness
