// What differs between the settings of two lines.
#include "probing/differences.hpp"

namespace orvane {

std::vector<Difference> differences(const qel::config::ServerSettings& before,
                                    const qel::config::ServerSettings& after) {
    const auto old_settings = settings_of(before), new_settings = settings_of(after);
    std::vector<Difference> result;
    for (const std::size_t position : differing(old_settings, new_settings))
        result.push_back({old_settings[position], new_settings[position]});
    return result;
}

} // namespace orvane
