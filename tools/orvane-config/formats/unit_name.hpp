// What the place of a unit tells.
#pragma once

#include "formats/source_files.hpp"

#include <map>
#include <string>
#include <string_view>

namespace orvane {

inline constexpr std::string_view unit_suffix = ".service";

struct UnitName {
    std::string directory, file; ///< no directory: it is not known

    bool is_known() const { return file.ends_with(unit_suffix); }
    bool is_of_user() const { return directory.find("/systemd/user") != directory.npos; }
    std::string stem() const { return file.substr(0, file.size() - unit_suffix.size()); }
    std::string prefix() const { return stem().substr(0, stem().find('@')); }
    std::string instance() const {
        const auto at = stem().find('@');
        return at == std::string::npos ? "" : stem().substr(at + 1);
    }
};

/// Of the first of the files; unknown on standard input.
UnitName name_of_unit(const SourceFiles& files);

/// The directory of the system that the unit is in; null: another one.
const std::string_view* system_directory(const UnitName& unit);

/// By their names: one hides another of the same name in a place that comes later.
std::map<std::string, std::string> drop_ins_of(const UnitName& unit, const SourceFiles& source);

} // namespace orvane
