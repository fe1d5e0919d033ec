// The file system that the measured code sees: one in which every directory exists and none is a link, on every
// machine. That is where validation has most to ask.
#pragma once

#include <cstddef>

namespace qel::config::bench {

/// The number of questions so far, each a call of readlink. The program that counts answers them itself.
extern std::size_t questions;

/// From here on a question that was asked before is an error.
void expect_new_questions();

/// Ends that. Throws std::runtime_error when something was asked twice.
void require_new_questions();

} // namespace qel::config::bench
