// What other users may do to a place in the file system, by its mode. An access-control list shows in the group's bits.
#include "system/other_users.hpp"

#include "qel/util/native_path.hpp"

#include <sys/stat.h>
#include <unistd.h>

namespace orvane {
namespace {

/// As user-private groups have it: the same number for both.
bool is_private(gid_t group) {
    return group == 0 || (group == geteuid() && group == getegid());
}

} // namespace

OtherUsers other_users_at(const qel::util::filesystem::Path& path) {
    struct stat entry {};
    if (stat(qel::util::filesystem::native(path).c_str(), &entry) != 0) return {};
    OtherUsers others{true, (entry.st_mode & S_IRGRP) != 0 && !is_private(entry.st_gid),
                      S_ISDIR(entry.st_mode) && (entry.st_mode & S_ISVTX) != 0};
    if ((entry.st_mode & S_IWOTH) != 0)
        others.writer = "every user";
    else if ((entry.st_mode & S_IWGRP) != 0 && !is_private(entry.st_gid))
        others.writer = "group " + std::to_string(entry.st_gid);
    else if (entry.st_uid != 0 && entry.st_uid != geteuid())
        others.writer = "user " + std::to_string(entry.st_uid);
    return others;
}

bool can_ask_about_other_users() {
    return true;
}

} // namespace orvane
