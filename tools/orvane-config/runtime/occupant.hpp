// What keeps a publisher out of the directories of its runtime files.
#pragma once

#include "runtime/runtime_state.hpp"
#include "system/directory_lock.hpp"

#include <list>
#include <string>

namespace orvane {

/// The locks of a server's directories.
using RootLocks = std::list<DirectoryLock>;

/// Locks every directory that the settings name. Returns whose they are, and `locks` then does not matter; empty when they
/// are ours now. A publisher that is about to leave is waited for, two seconds at most.
std::string other_publisher(const qel::config::ServerSettings& settings, RootLocks& locks);

/// Why another server's files are in the way; empty when none are. The files of a killed server are not.
std::string occupant(const qel::config::ServerSettings& settings);

} // namespace orvane
