// How a group looks: with a limit, and without taking the others with it.
#include "preflight/groups.hpp"

#include "preflight/time_limit.hpp"

#include <exception>

namespace orvane::preflight {

/// The looks of a group have shorter limits; this one is for the calls that nobody expects to hang.
constexpr std::chrono::seconds group_limit(20);

std::vector<Finding> look_at(const Group& group, const std::shared_ptr<const Context>& context) {
    const auto findings = std::make_shared<Findings>();
    const auto look = [context, findings, run = group.look] {
        run(*context, *findings);
        return true;
    };
    try {
        if (!within(group_limit, look))
            findings->add(Kind::time_limit, u"",
                          "no answer after " + std::to_string(group_limit.count()) + " s");
    } catch (const std::exception& failure) {
        findings->add(Kind::look_failed, u"", failure.what());
    }
    return consistent(findings->so_far());
}

} // namespace orvane::preflight
