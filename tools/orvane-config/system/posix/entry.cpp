// A place in the file system, on POSIX.
#include "system/entry.hpp"

#include "system/posix/user.hpp"
#include "text/quoting.hpp"

#include "qel/util/native_path.hpp"

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace orvane {
namespace {

using qel::util::filesystem::native;
using qel::util::filesystem::Path;

bool may(const std::string& name, int right) {
    // Not access(), which answers for the user who started a program with other rights.
    return faccessat(AT_FDCWD, name.c_str(), right, AT_EACCESS) == 0;
}

Entry::State state_of(mode_t mode) {
    if (S_ISDIR(mode)) return Entry::State::directory;
    return S_ISREG(mode) ? Entry::State::file : Entry::State::other;
}

Entry::State state_without(int error) {
    if (error == ENAMETOOLONG) return Entry::State::too_long;
    if (error == ENOENT || error == ENOTDIR) return Entry::State::absent;
    if (error == EACCES) return Entry::State::unreachable;
    return error == ELOOP ? Entry::State::loop : Entry::State::failed;
}

/// Without the separators at the end, which would make the system follow a link.
std::string link_name(std::string name) {
    while (name.size() > 1 && name.back() == '/')
        name.pop_back();
    return name;
}

} // namespace

Entry entry_at(const Path& path) {
    const std::string name = native(path);
    Entry there;
    struct stat entry {};
    there.link = lstat(link_name(name).c_str(), &entry) == 0 && S_ISLNK(entry.st_mode);
    if (stat(name.c_str(), &entry) != 0) {
        there.state = state_without(errno);
        there.failure = std::generic_category().message(errno);
        return there;
    }
    there.state = state_of(entry.st_mode);
    there.own = entry.st_uid == geteuid();
    there.read = may(name, R_OK);
    there.execute = may(name, X_OK);
    struct statvfs system {};
    if (statvfs(name.c_str(), &system) == 0) {
        there.read_only = (system.f_flag & ST_RDONLY) != 0;
        there.no_programs = (system.f_flag & ST_NOEXEC) != 0;
    }
    there.write = !there.read_only && may(name, W_OK);
    return there;
}

std::optional<Room> room_in(const Path& directory) {
    struct statvfs system {};
    // A file system that holds nothing, such as /proc, says that it has no space at all.
    if (statvfs(native(directory).c_str(), &system) != 0 || system.f_blocks == 0) return std::nullopt;
    const bool root = geteuid() == 0;
    Room room{std::uint64_t{root ? system.f_bfree : system.f_bavail} * system.f_frsize, std::nullopt};
    // Some file systems have no fixed number of files.
    if (system.f_files != 0) room.files = root ? system.f_ffree : system.f_favail;
    return room;
}

std::string name_of_user(uid_t user) {
    // The system's own list alone: a look-up might ask a server of the network.
    const std::unique_ptr<FILE, int (*)(FILE*)> file(fopen("/etc/passwd", "re"), fclose);
    while (file) {
        const passwd* const entry = fgetpwent(file.get());
        if (entry == nullptr) break;
        if (entry->pw_uid == user) return entry->pw_name;
    }
    return std::to_string(user);
}

std::string user_name() {
    return name_of_user(geteuid());
}

bool has_every_right() {
    return geteuid() == 0;
}

std::string command_to_grant(Right right, const Path& path, bool own) {
    constexpr std::array<const char*, 4> modes = {"u+x", "u+rx", "u+rwx", "u+rx"};
    const std::string name = shown(path.text());
    if (own) return std::string("chmod ") + modes.at(static_cast<std::size_t>(right)) + " " + name;
    if (right == Right::write) return "sudo chown " + user_name() + " " + name;
    // Not every other user, which chmod would give it to.
    return "sudo setfacl -m u:" + user_name() + (right == Right::enter ? ":x " : ":rx ") + name;
}

std::string command_to_create(const Path& directory, bool by_another) {
    const std::string name = shown(directory.text());
    return by_another ? "sudo install -d -o " + user_name() + " " + name : "mkdir -p " + name;
}

} // namespace orvane
