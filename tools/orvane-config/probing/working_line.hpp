// A command line that is changed from its beginning to its end.
#pragma once

#include "probing/probing.hpp"

#include <algorithm>
#include <iterator>

namespace orvane {

/// Two stacks, one on each side of the last change: the next change near it is cheap, however long the line is.
class WorkingLine {
public:
    explicit WorkingLine(CommandLine line) : after_(std::move(line)) {
        std::reverse(after_.begin(), after_.end());
    }

    std::size_t size() const { return before_.size() + after_.size(); }

    const Occurrence& operator[](std::size_t at) const {
        return at < before_.size() ? before_[at] : after_[size() - 1 - at];
    }

    CommandLine part(std::size_t begin, std::size_t end) const {
        CommandLine line;
        for (std::size_t i = begin; i != end; ++i)
            line.push_back((*this)[i]);
        return line;
    }

    /// Puts occurrences in the place of those in [begin, end).
    void replace(std::size_t begin, std::size_t end, CommandLine occurrences) {
        while (before_.size() > begin)
            move_last(before_, after_);
        while (before_.size() < begin)
            move_last(after_, before_);
        after_.resize(after_.size() - (end - begin));
        std::move(occurrences.begin(), occurrences.end(), std::back_inserter(before_));
    }

private:
    static void move_last(CommandLine& from, CommandLine& to) {
        to.push_back(std::move(from.back()));
        from.pop_back();
    }

    CommandLine before_{};
    CommandLine after_; // backwards
};

} // namespace orvane
