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
    const bool directory = S_ISDIR(entry.st_mode);
    const mode_t by_group = directory ? S_IXGRP : S_IRGRP, by_all = directory ? S_IXOTH : S_IROTH;
    OtherUsers others{true, (entry.st_mode & by_group) != 0 && !is_private(entry.st_gid),
                      (entry.st_mode & by_all) != 0, directory && (entry.st_mode & S_ISVTX) != 0};
    if ((entry.st_mode & S_IWOTH) != 0)
        others.writer = "every user";
    else if ((entry.st_mode & S_IWGRP) != 0 && !is_private(entry.st_gid))
        others.writer = "group " + std::to_string(entry.st_gid);
    else if (entry.st_uid != 0 && entry.st_uid != geteuid())
        others.writer = "user " + std::to_string(entry.st_uid);
    return others;
}

bool can_ask_about_writers() {
    return true;
}

std::string command_against_readers(const qel::util::filesystem::Path&, const std::string& shown) {
    return "chmod o= " + shown;
}

} // namespace orvane
