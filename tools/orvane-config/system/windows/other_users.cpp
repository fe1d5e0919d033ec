// What other users may do to a place in the file system: not asked on Windows.
#include "system/other_users.hpp"

namespace orvane {

OtherUsers other_users_at(const qel::util::filesystem::Path&) {
    return {};
}

bool can_ask_about_other_users() {
    return false;
}

} // namespace orvane
