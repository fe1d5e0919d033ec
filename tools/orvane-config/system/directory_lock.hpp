// Directories for one publisher at a time, and publishers that answer for a process.
#pragma once

#include "qel/util/path.hpp"

#include <memory>
#include <string>

namespace orvane {

/// The same for every path to a directory, and different for another one. Publishers lock several directories in the order
/// of these texts, so that no two wait for each other. Throws std::runtime_error when there is no such directory.
std::string identity_of(const qel::util::filesystem::Path& directory);

/// Keeps other publishers of this machine out of a directory, also those in other pid namespaces. The system takes the lock
/// back when the process ends, however it ends.
class DirectoryLock {
public:
    /// Does not lock yet.
    explicit DirectoryLock(const qel::util::filesystem::Path& directory);
    DirectoryLock(const DirectoryLock&) = delete;
    DirectoryLock& operator=(const DirectoryLock&) = delete;
    ~DirectoryLock();

    /// False while another publisher has the lock. Throws std::runtime_error on a failure.
    bool try_to_lock();

    /// The process that had the lock when this one did not get it; 0 when the system does not tell.
    unsigned holder() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// Lets is_answered_for() know, as long as the result lives, that this process answers for the one in its pid file. The file
/// is created if there is none.
[[nodiscard]] std::shared_ptr<void> answer_for(const qel::util::filesystem::Path& pid_file, unsigned pid);

/// Whether a publisher answers for the process in a pid file. Needs only the right to read the file, and changes nothing.
bool is_answered_for(const qel::util::filesystem::Path& pid_file, unsigned pid);

} // namespace orvane
