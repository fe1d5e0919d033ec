// File descriptors that are closed with their owner.
#pragma once

#include <array>
#include <cerrno>
#include <cstddef>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace orvane {

class Descriptor {
public:
    /// Takes what open() or socket() returned, also a failure.
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0) close(number_);
    }
    int get() const { return number_; }

private:
    int number_;
};

class Pipe {
public:
    Pipe() {
        if (pipe2(ends_.data(), O_CLOEXEC) != 0)
            throw std::system_error(errno, std::generic_category(), "cannot create a pipe");
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        close_end(0);
        close_end(1);
    }

    int reader() const { return ends_[0]; }
    int writer() const { return ends_[1]; }
    void close_reader() { close_end(0); }
    void close_writer() { close_end(1); }

private:
    void close_end(std::size_t which) {
        if (ends_.at(which) >= 0) close(ends_.at(which));
        ends_.at(which) = -1;
    }

    std::array<int, 2> ends_{};
};

} // namespace orvane
