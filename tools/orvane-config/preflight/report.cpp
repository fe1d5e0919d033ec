// What all groups found, and what follows from it.
#include "preflight/report.hpp"

#include <algorithm>

namespace orvane::preflight {

std::size_t Report::count(Severity severity) const {
    std::size_t count = 0;
    for (const GroupReport& group : groups)
        count += static_cast<std::size_t>(std::ranges::count_if(
            group.findings, [&](const Finding& one) { return about(one.kind).severity == severity; }));
    return count;
}

bool Report::ready() const {
    return clear() && std::ranges::all_of(groups, &GroupReport::looked_at);
}

bool Report::may_start() const {
    return std::ranges::all_of(groups, [](const GroupReport& group) {
        return std::ranges::all_of(group.findings, [](const Finding& one) {
            return !is_in_the_way(one) || one.kind == Kind::not_looked_at;
        });
    });
}

} // namespace orvane::preflight
