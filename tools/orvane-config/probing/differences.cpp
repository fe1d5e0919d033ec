// What differs between the settings of two lines.
#include "probing/differences.hpp"

namespace orvane {

std::vector<Difference> differences(const qel::config::ServerSettings& before,
                                    const qel::config::ServerSettings& after) {
    const auto old_settings = settings_of(before), new_settings = settings_of(after);
    std::vector<Difference> result;
    for (std::size_t i = 0; i != old_settings.size(); ++i)
        if (old_settings[i] != new_settings[i]) result.push_back({old_settings[i], new_settings[i]});
    return result;
}

} // namespace orvane
