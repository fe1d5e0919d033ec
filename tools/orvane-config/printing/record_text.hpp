// A record as text: its settings with their names.
#pragma once

#include "qel/config/server_settings.hpp"

#include <iosfwd>
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

/// Writes `name = value`, without ending the line. Control characters are written as \u and four hexadecimal digits,
/// so that a value never leaves its line.
void print(const std::pair<std::string, std::string>& line, std::ostream& out);

} // namespace orvane
