// A directory for one publisher at a time.
#pragma once

#include "qel/util/path.hpp"

#include <chrono>
#include <memory>

namespace orvane {

/// Keeps other publishers out of a directory while it lives.
class DirectoryLock {
public:
    /// Waits at most `patience` for others to leave. Throws std::runtime_error when they do not, or on a failure.
    DirectoryLock(const qel::util::filesystem::Path& directory, std::chrono::milliseconds patience);
    DirectoryLock(const DirectoryLock&) = delete;
    DirectoryLock& operator=(const DirectoryLock&) = delete;
    ~DirectoryLock();

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace orvane
