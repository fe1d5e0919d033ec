// A place in the file system, as the system answers for this user. Nothing is opened for writing, created or changed.
#pragma once

#include "qel/util/path.hpp"

#include <cstdint>
#include <optional>
#include <string>

namespace orvane {

struct Entry {
    enum class State {
        absent,
        directory,
        file,
        other,       ///< a pipe, a device, a socket
        loop,        ///< links that lead back to themselves
        unreachable, ///< this user may not go there
        too_long,    ///< longer than the system allows
        failed,
    };

    State state = State::absent;
    std::string failure{}; ///< in the system's words, of `failed`
    bool link = false;     ///< the last element is one
    bool rights_known = true;
    bool read = false;        ///< of a directory: list it
    bool write = false;       ///< of a directory: create and remove files in it
    bool execute = false;     ///< of a directory: reach what is in it
    bool read_only = false;   ///< nobody can write in this file system
    bool own = false;         ///< this user is its owner
    bool no_programs = false; ///< nobody can execute a file in this file system
};

Entry entry_at(const qel::util::filesystem::Path& path);

/// What this user can still store in the file system of an existing directory.
struct Room {
    std::uint64_t bytes;
    std::optional<std::uint64_t> files; ///< where their number is limited
};

/// None when the system does not tell.
std::optional<Room> room_in(const qel::util::filesystem::Path& directory);

/// This process's user, as commands of the system name it.
std::string user_name();

/// Whether this user is asked for no permission. Not told on Windows.
bool has_every_right();

enum class Right { enter, list, write, execute };

/// A command with which somebody who may, gives this user the right.
std::string command_to_grant(Right right, const qel::util::filesystem::Path& path, bool own);

/// A command that creates the directory for this user; with `by_another`, when this user may not.
std::string command_to_create(const qel::util::filesystem::Path& directory, bool by_another);

} // namespace orvane
