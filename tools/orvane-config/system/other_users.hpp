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

/// Follows links. On Windows, nobody is asked for who writes, and a group is one of all users.
OtherUsers other_users_at(const qel::util::filesystem::Path& path);

/// Whether this build asks who writes.
bool can_ask_about_writers();

/// The command that takes the right to read the file from every user; `shown` is the file for people.
std::string command_against_readers(const qel::util::filesystem::Path& path, const std::string& shown);

} // namespace orvane
