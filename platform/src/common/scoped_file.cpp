// scoped_file: the owner removes the file when it is destroyed.
#include "qel/util/scoped_file.hpp"

#include "file_system.hpp"

#include <exception>
#include <utility>

namespace qel::util::filesystem {

scoped_file::scoped_file() noexcept = default;
scoped_file::scoped_file(Path path) noexcept : path_(std::move(path)) {}
scoped_file::scoped_file(scoped_file&& other) noexcept : path_(std::exchange(other.path_, Path())) {}

scoped_file& scoped_file::operator=(scoped_file&& other) noexcept {
    // The same file, announced again: it already has its new content, so it stays.
    if (!(path_ == other.path_)) remove();
    path_ = std::exchange(other.path_, Path());
    return *this;
}

scoped_file::~scoped_file() {
    remove();
}

const Path& scoped_file::path() const noexcept {
    return path_;
}

void scoped_file::remove() noexcept {
    if (path_.empty()) return;
    try {
        remove_file(path_);
    } catch (const std::exception&) {
        // Out of memory: the file stays, as it does if the system refuses to remove it.
    }
}

} // namespace qel::util::filesystem
