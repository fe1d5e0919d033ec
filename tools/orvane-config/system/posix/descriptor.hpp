// A file descriptor that is closed with its owner.
#pragma once

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

} // namespace orvane
