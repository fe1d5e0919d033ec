// A directory for one publisher at a time.
#pragma once

#include "qel/util/path.hpp"

#include <memory>

namespace orvane {

/// Keeps other publishers of this machine out of a directory, also those in other pid namespaces. The system takes the lock
/// back when the process ends, however it ends. Nothing is written into the directory.
class DirectoryLock {
public:
    /// Does not lock yet. Throws std::runtime_error when there is nothing to lock.
    explicit DirectoryLock(const qel::util::filesystem::Path& directory);
    DirectoryLock(const DirectoryLock&) = delete;
    DirectoryLock& operator=(const DirectoryLock&) = delete;
    ~DirectoryLock();

    /// False while another publisher has the lock. Throws std::runtime_error on a failure.
    bool try_to_lock();

    /// Lets is_answered_for() know, while the lock lives, whose process this is.
    void answer_for(unsigned pid);

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// Whether a lock on the directory answers for this process. Needs only the right to list the directory, and changes nothing.
bool is_answered_for(const qel::util::filesystem::Path& directory, unsigned pid);

} // namespace orvane
