// The ids of faults and warnings that were given, and which are wanted.
#pragma once

#include "explaining/kinds.hpp"
#include "explaining/warnings.hpp"
#include "printing/verdict_text.hpp"
#include "verbs/call.hpp"

namespace orvane {

/// Those of --ignore. Throws Misused when one of them is no kind of warning, and not among the verb's `others`.
WarningIds ignored_warnings(const Call& call, const WarningIds& others = {});

inline Ids wanted_ids(const Call& call) {
    return call.has(own("ids")) ? Ids::everywhere : Ids::of_warnings;
}

} // namespace orvane
