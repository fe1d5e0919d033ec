// The settings that name directories, and what the server does in them, a row each.
#pragma once

#include "reference/flag_forms.hpp"

#include "qel/config/server_settings.hpp"

#include <string_view>
#include <vector>

namespace orvane::preflight {

using qel::config::Path;
using qel::config::ServerSettings;

struct DirectorySetting {
    std::u16string_view flag;
    bool lists;  ///< the server reads which files are there
    bool writes; ///< the server creates files there
    std::vector<Path> (*directories)(const ServerSettings&);
};

/// Whatever a setting has for directories, as a list.
inline std::vector<Path> as_list(const Path& path) {
    return {path};
}
inline std::vector<Path> as_list(const std::vector<Path>& paths) {
    return paths;
}
template <class Text>
std::vector<Path> as_list(const boost::optional<Text>& path) {
    return path ? std::vector<Path>{Path(*path)} : std::vector<Path>();
}

#define ZEP_DIRECTORY(setting, lists, writes)                                                                \
    {                                                                                                        \
        flag::setting, lists, writes,                                                                        \
            [](const ServerSettings& settings) { return as_list(settings.setting()); }                       \
    }

// clang-format off
inline constexpr DirectorySetting directory_settings[] = {
    //                                   lists  writes
    ZEP_DIRECTORY(auto_deploy_root,      true,  false),
    ZEP_DIRECTORY(extract_root,          true,  true),
    ZEP_DIRECTORY(lumo_root,             true,  false),
    ZEP_DIRECTORY(files_root,            false, false),
    ZEP_DIRECTORY(log_root,              true,  true),
    ZEP_DIRECTORY(log_archive_root,      true,  true),
    ZEP_DIRECTORY(pid_root,              false, true),
    ZEP_DIRECTORY(endpoint_root,         false, true),
    ZEP_DIRECTORY(socket_root,           false, true),
    ZEP_DIRECTORY(response_archive_root, true,  true),
};
// clang-format on

#undef ZEP_DIRECTORY

static_assert(name_all(directory_settings, Form::directory), "a flag that takes a directory has no row here");

} // namespace orvane::preflight
