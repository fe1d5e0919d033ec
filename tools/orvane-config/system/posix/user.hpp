// Names of users.
#pragma once

#include <string>

#include <sys/types.h>

namespace orvane {

/// The number where the user has no name.
std::string name_of_user(uid_t user);

} // namespace orvane
