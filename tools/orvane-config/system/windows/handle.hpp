// What the files of this folder share.
#pragma once

#include <string>
#include <system_error>

#include <windows.h>

namespace orvane {

/// A handle that is closed with its owner.
class Handle {
public:
    Handle() = default;
    explicit Handle(HANDLE handle) : handle_(handle) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() {
        if (handle_ != nullptr) CloseHandle(handle_);
    }

    HANDLE get() const { return handle_; }
    void reset(HANDLE handle) { handle_ = handle; }

private:
    HANDLE handle_ = nullptr;
};

[[noreturn]] inline void fail(const std::string& what, DWORD error) {
    throw std::system_error(static_cast<int>(error), std::system_category(), what);
}

} // namespace orvane
