// The file system that the measured code sees on every machine: every directory exists and none is a link. There,
// validation needs the most look-ups.
#pragma once

#include <cstddef>

namespace qel::config::bench {

/// The number of look-ups so far, each a call of readlink. The counting program answers them itself.
extern std::size_t questions;

/// From here on, a repeated look-up is an error.
void expect_new_questions();

/// Ends that. Throws std::runtime_error if something was looked up twice.
void require_new_questions();

} // namespace qel::config::bench
