// The settings of a record, with their names.
#pragma once

#include "qel/config/server_settings.hpp"

#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace orvane {

/// One field that is no record itself, of the record or of one inside it: `http.port`, `lumo_root`.
struct Setting {
    std::string name;
    /// `http.port` with its value, or a line for each element: `lumo_root[0]`, `lumo_root[1]`. Empty when not set.
    std::vector<std::pair<std::string, std::string>> lines{};

    bool operator==(const Setting&) const = default;
};

/// All settings, in declaration order, those that are not set and those of absent listeners and limits too. The names
/// and their order are the same for every record.
std::vector<Setting> settings_of(const qel::config::ServerSettings& settings);

/// The positions of those that differ.
std::set<std::size_t> differing(const std::vector<Setting>& before, const std::vector<Setting>& after);

struct Difference {
    Setting before, after;
};

/// In the order of the settings.
std::vector<Difference> differences(const qel::config::ServerSettings& before,
                                    const qel::config::ServerSettings& after);

} // namespace orvane
