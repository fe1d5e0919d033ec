// The caches that the server starts or attaches to.
#include "readiness/groups.hpp"

namespace orvane::readiness {

void look_at_caches(const Context& context, Findings& findings) {
    const auto& settings = context.settings;
    if (settings.cache_list()) findings.add(Kind::not_looked_at, u"", "not looked at in this build");
}

} // namespace orvane::readiness
