// A file that gets another content in one step.
#pragma once

#include "qel/util/path.hpp"

#include <string>

namespace orvane {

/// Whoever reads it finds the old content or the new one, also after a failure of power. Owner, rights and attributes stay,
/// and a link leads to the same file. Throws std::runtime_error where the system or the user's rights do not allow that, and
/// the content is then the old one.
void replace_file(const qel::util::filesystem::Path& file, const std::string& content);

} // namespace orvane
