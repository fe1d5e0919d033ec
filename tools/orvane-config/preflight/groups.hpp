// The groups of things that preflight looks at, a row each.
#pragma once

#include "preflight/findings.hpp"

#include <memory>
#include <string_view>
#include <vector>

namespace orvane::preflight {

/// Looks, and changes nothing. Every look has a limit in bytes and time, and says when it met that.
using Look = void(const Context& context, Findings& findings);

Look look_at_directories, look_at_listeners, look_at_tls, look_at_programs, look_at_caches, look_at_resources,
    look_at_runtime, look_at_security;

struct Group {
    std::string_view name;
    std::string_view looks_at;
    Look* look;
};

// clang-format off
inline constexpr Group groups[] = {
    {"directories", "every directory that the flags name: whether it is there, this user's rights, the space left", look_at_directories},
    {"listeners",   "the hosts and ports of the listeners and of the control interface", look_at_listeners},
    {"tls",         "keys, certificates, and what the HTTPS listener offers its clients", look_at_tls},
    {"programs",    "the commands of the driver and of the log handlers", look_at_programs},
    {"caches",      "the ports of the caches to start, and the hosts of the caches to attach to", look_at_caches},
    {"resources",   "memory limits and thresholds, compared with the memory of this machine", look_at_resources},
    {"runtime",     "the runtime files of servers that run or have run", look_at_runtime},
    {"security",    "who else may change what the server trusts, and what it gives away", look_at_security},
};
// clang-format on

/// What the group finds, in order. What it looked at must not change while it may still be looking.
std::vector<Finding> look_at(const Group& group, const std::shared_ptr<const Context>& context);

} // namespace orvane::preflight
