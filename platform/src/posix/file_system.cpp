// The file-system calls on POSIX.
#include "file_system.hpp"

#include "qel/i18n/convert.hpp"
#include "qel/util/native_path.hpp"

#include <array>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <unistd.h>

namespace qel::util::filesystem {

Entry look_up(const std::u16string& path) {
    // The system would read such a path only up to the NUL.
    if (path.find(u'\0') != std::u16string::npos) return {};

    std::array<char, PATH_MAX> target;
    const ssize_t length = ::readlink(i18n::ustring_to_utf8(path).c_str(), target.data(), target.size());
    if (length < 0) return {errno == EINVAL ? Entry::Kind::plain : Entry::Kind::missing};
    // If the buffer is full, the target was cut off.
    const auto size = static_cast<std::size_t>(length);
    if (size == target.size()) return {};
    return {Entry::Kind::link, i18n::utf8_to_ustring(std::string_view(target.data(), size))};
}

std::u16string starting_point(std::u16string_view root) {
    if (!root.empty()) return std::u16string(root);
    std::error_code failure;
    return i18n::utf8_to_ustring(std::filesystem::current_path(failure).native());
}

void remove_file(const Path& path) {
    // The owner does not care whether the file is already gone or may not be removed.
    [[maybe_unused]] const int outcome = ::unlink(native(path).c_str());
}

} // namespace qel::util::filesystem
