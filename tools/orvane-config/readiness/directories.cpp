// The directories that the server uses.
#include "readiness/groups.hpp"

namespace orvane::readiness {

void look_at_directories(const Context&, Findings& findings) {
    findings.add(Kind::not_looked_at, u"", "not looked at in this build");
}

} // namespace orvane::readiness
