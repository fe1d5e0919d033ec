// What all groups found, and what follows from it.
#pragma once

#include "preflight/groups.hpp"

#include <memory>
#include <vector>

namespace orvane::preflight {

struct GroupReport {
    const Group* group;
    bool looked_at; ///< whether the user wanted this group
    std::vector<Finding> findings{};
};

struct Report {
    std::shared_ptr<const Context> context;
    std::vector<GroupReport> groups{}; ///< all of them

    /// How many findings have this severity.
    std::size_t count(Severity severity) const;
    /// Whether nothing stands in the way, as far as the user wanted it looked at.
    bool clear() const { return count(Severity::blocking) == 0 && count(Severity::unknown) == 0; }
    /// The same, and everything was looked at.
    bool ready() const;
    /// Whether `exec` starts the server: what no run of this build can look at does not keep it from that.
    bool may_start() const;
};

} // namespace orvane::preflight
