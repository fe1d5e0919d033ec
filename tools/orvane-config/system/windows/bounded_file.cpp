// Files of any kind and size, read without harm, on Windows.
#include "system/bounded_file.hpp"

#include "system/windows/handle.hpp"

#include "qel/util/native_path.hpp"

#include <system_error>

namespace orvane {
namespace {

using Outcome = BoundedFile::Outcome;

BoundedFile failure() {
    const DWORD error = GetLastError();
    BoundedFile result{Outcome::failed, std::system_category().message(static_cast<int>(error))};
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_NAME)
        result.outcome = Outcome::missing;
    if (error == ERROR_ACCESS_DENIED) result.outcome = Outcome::no_access;
    return result;
}

} // namespace

BoundedFile read_bounded(const qel::util::filesystem::Path& path, std::size_t limit, Reads reads) {
    const auto name = qel::util::filesystem::native(path);
    const DWORD attributes = GetFileAttributesW(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return failure();
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return {Outcome::not_a_file, "a directory"};
    const Handle file(CreateFileW(name.c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file.get() == INVALID_HANDLE_VALUE) return failure();
    // Names like NUL and CON are devices in every directory.
    if (GetFileType(file.get()) != FILE_TYPE_DISK) return {Outcome::not_a_file, "a device"};
    BoundedFile result{Outcome::read, std::string(limit + 1, '\0')};
    std::size_t size = 0;
    for (bool more = true; more && size <= limit;) {
        DWORD count = 0;
        if (!ReadFile(file.get(), result.text.data() + size, static_cast<DWORD>(limit + 1 - size), &count,
                      nullptr))
            return failure();
        size += count;
        more = count != 0 && reads == Reads::to_the_end;
    }
    if (size > limit) return {Outcome::too_large, {}};
    result.text.resize(size);
    return result;
}

} // namespace orvane
