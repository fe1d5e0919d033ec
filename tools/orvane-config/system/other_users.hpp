// What other users may do to a place in the file system.
#pragma once

#include "qel/util/path.hpp"

#include <string>

namespace orvane {

/// Other users: neither this one nor root, nor a group that is this user's alone.
struct OtherUsers {
    bool known = false; ///< false: there is nothing, or the system is not asked
    bool group_reads = false, every_user_reads = false; ///< of a directory: may enter
    bool sticky = false;  ///< of a directory: nobody removes or renames what belongs to another
    std::string writer{}; ///< who may write, "user www" or "every user"; empty: nobody
};

/// Follows links. Not asked on Windows.
OtherUsers other_users_at(const qel::util::filesystem::Path& path);

/// Whether this build asks.
bool can_ask_about_other_users();

} // namespace orvane
