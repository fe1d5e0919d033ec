// The manual pages, a row each.
#pragma once

#include <iosfwd>
#include <string_view>

namespace orvane::manuals {

/// What follows the NAME of a page.
using Write = void(std::ostream& out);
Write write_tool, write_flags, write_files;

struct Page {
    std::string_view name;
    int section;
    std::string_view about;
    Write* write;
    std::string_view see_also; ///< as man sets it
};

// clang-format off
inline constexpr Page pages[] = {
    {"orvane-config",        1, "check command lines of the Orvane server, and find running servers", write_tool,
     ".BR orvane\\-flags (7),\n.BR orvane\\-runtime\\-files (5)"},
    {"orvane-flags",         7, "the flags of the Orvane server",                                     write_flags,
     ".BR orvane\\-config (1),\n.BR orvane\\-runtime\\-files (5)"},
    {"orvane-runtime-files", 5, "files by which a running Orvane server is found",                    write_files,
     ".BR orvane\\-config (1),\n.BR orvane\\-flags (7)"},
};
// clang-format on

} // namespace orvane::manuals
