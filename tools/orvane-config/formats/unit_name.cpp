// What the place of a unit tells.
#include "formats/unit_name.hpp"

#include "formats/content.hpp"

#include <algorithm>

namespace orvane {
namespace {

/// From the one that goes before the others.
constexpr std::string_view unit_directories[] = {"/etc/systemd/system", "/run/systemd/system",
                                                 "/usr/local/lib/systemd/system", "/usr/lib/systemd/system",
                                                 "/lib/systemd/system"};

/// Of the drop-ins, from the most special one.
std::vector<std::string> names_of_drop_ins(const UnitName& unit) {
    std::vector<std::string> names{unit.file};
    if (!unit.instance().empty()) names.push_back(unit.prefix() + "@" + std::string(unit_suffix));
    const std::string prefix = unit.prefix();
    for (auto end = prefix.rfind('-'); end != prefix.npos && end != 0; end = prefix.rfind('-', end - 1))
        names.push_back(prefix.substr(0, end + 1) + std::string(unit_suffix));
    names.emplace_back("service");
    return names;
}

} // namespace

UnitName name_of_unit(const SourceFiles& files) {
    if (files.paths.empty() || files.paths[0] == "-") return {};
    const std::string path = absolute(files.paths[0]);
    const auto slash = path.rfind('/');
    return {path.substr(0, slash), path.substr(slash + 1)};
}

const std::string_view* system_directory(const UnitName& unit) {
    const auto found = std::ranges::find_if(
        unit_directories, [&](std::string_view one) { return unit.directory.ends_with(one); });
    return found == std::end(unit_directories) ? nullptr : found;
}

std::map<std::string, std::string> drop_ins_of(const UnitName& unit, const SourceFiles& source) {
    std::map<std::string, std::string> files;
    std::vector<std::string> directories{unit.directory};
    if (system_directory(unit) != nullptr) {
        directories.clear();
        for (const std::string_view one : unit_directories)
            directories.push_back(source.root + std::string(one));
    }
    for (const std::string& name : names_of_drop_ins(unit))
        for (const std::string& directory : directories) {
            const std::string place = std::string(directory).append("/").append(name).append(".d");
            if (!is_directory(place)) continue;
            for (const std::string& file : files_in(place, source.name_of(place), true))
                if (file.ends_with(".conf")) files.emplace(file.substr(file.rfind('/') + 1), file);
        }
    return files;
}

} // namespace orvane
