// A line with each of its occurrences left out in turn.
#pragma once

#include "probing/probing.hpp"

namespace orvane {

/// Asks about a line with each of its occurrences left out in turn.
class LeaveOneOut {
public:
    explicit LeaveOneOut(const CommandLine& line) : line_(line), tokens_(tokens_of(line)) {}

    /// About the line without the occurrence that comes next.
    Answer ask_without() {
        const auto from = tokens_.begin() + static_cast<std::ptrdiff_t>(token_);
        const Tokens occurrence(from, from + size());
        tokens_.erase(from, from + size());
        Answer answer = ask(tokens_);
        tokens_.insert(tokens_.begin() + static_cast<std::ptrdiff_t>(token_), occurrence.begin(),
                       occurrence.end());
        return answer;
    }

    void keep() { token_ += line_[step_++].size(); }
    void omit() {
        const auto from = tokens_.begin() + static_cast<std::ptrdiff_t>(token_);
        tokens_.erase(from, from + size());
        ++step_;
    }

private:
    std::ptrdiff_t size() const { return static_cast<std::ptrdiff_t>(line_[step_].size()); }

    const CommandLine& line_;
    Tokens tokens_;
    std::size_t step_ = 0;
    std::size_t token_ = 0;
};

} // namespace orvane
