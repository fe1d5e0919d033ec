// What differs between the settings of two lines.
#pragma once

#include "probing/settings.hpp"

namespace orvane {

struct Difference {
    Setting before, after;
};

/// In the order in which `show` prints the settings.
std::vector<Difference> differences(const qel::config::ServerSettings& before,
                                    const qel::config::ServerSettings& after);

} // namespace orvane
