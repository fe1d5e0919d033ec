// A file that gets another content in one step, on POSIX.
#include "system/replace_file.hpp"

#include "system/posix/descriptor.hpp"

#include "qel/util/native_path.hpp"

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include <sys/stat.h>
#include <sys/xattr.h>

namespace orvane {
namespace {

class Replacement {
public:
    Replacement(std::string file, std::string name)
        : file_(std::move(file)), name_(std::move(name)), old_(open(file_.c_str(), O_RDWR | O_CLOEXEC)),
          path_(made_name()),
          new_(must(mkostemp(path_.data(), O_CLOEXEC), "no file can be made beside it: ")) {}
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement() {
        if (!path_.empty()) std::remove(path_.c_str());
    }

    void fill(std::string_view content) const {
        while (!content.empty()) {
            const ssize_t size = write(new_.get(), content.data(), content.size());
            if (size < 0 && errno == EINTR) continue;
            content.remove_prefix(static_cast<std::size_t>(must(size, "")));
        }
    }

    /// The rights come after the owner, who takes some of them away, and before the access list, which are more.
    void keep_attributes() const {
        must(fchown(new_.get(), entry_.st_uid, entry_.st_gid), "its owner cannot be kept: ");
        must(fchmod(new_.get(), entry_.st_mode & 07777), "its mode cannot be kept: ");
        std::string names(1 << 16, '\0');
        const ssize_t size = flistxattr(old_.get(), names.data(), names.size());
        if (size < 0 && errno == ENOTSUP) return;
        names.resize(static_cast<std::size_t>(must(size, "its attributes cannot be kept: ")));
        for (std::size_t at = 0; at < names.size(); at = names.find('\0', at) + 1)
            keep_attribute(&names[at]);
    }

    void take_its_place() {
        must(fsync(new_.get()), "");
        must(std::rename(path_.c_str(), file_.c_str()), "");
        path_.clear();
        // Not all file systems can; the file is there in any case.
        const Descriptor directory(open(directory_of(file_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        fsync(directory.get());
    }

private:
    static std::string directory_of(const std::string& file) { return file.substr(0, file.rfind('/') + 1); }

    /// Who reads all files of a directory skips those that begin with a dot.
    std::string made_name() {
        must(old_.get(), "");
        must(fstat(old_.get(), &entry_), "");
        if (!S_ISREG(entry_.st_mode)) fail("it is not a regular file");
        if (entry_.st_nlink > 1)
            fail(std::string("it has ")
                     .append(std::to_string(entry_.st_nlink))
                     .append(" hard links, and the others would keep the old content"));
        return directory_of(file_).append(".").append(file_, file_.rfind('/') + 1).append(".XXXXXX");
    }

    /// The system may have set it already, and not let this user do so.
    void keep_attribute(const char* attribute) const {
        const std::string value = value_of(old_.get(), attribute);
        if (fsetxattr(new_.get(), attribute, value.data(), value.size(), 0) == 0) return;
        const int error = errno;
        if (value_of(new_.get(), attribute) == value) return;
        errno = error;
        must(-1, std::string("its attribute ").append(attribute).append(" cannot be kept: "));
    }

    static std::string value_of(int file, const char* attribute) {
        std::string value(1 << 16, '\0');
        const ssize_t size = fgetxattr(file, attribute, value.data(), value.size());
        value.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
        return value;
    }

    [[noreturn]] void fail(const std::string& why) const {
        throw std::runtime_error(std::string("cannot replace ").append(name_).append(": ").append(why));
    }

    template <class Result>
    Result must(Result result, std::string what) const {
        if (result < 0) fail(what.append(std::generic_category().message(errno)));
        return result;
    }

    std::string file_, name_;
    struct stat entry_ {};
    Descriptor old_;
    std::string path_; ///< of the new file, until it has its place
    Descriptor new_;
};

} // namespace

void replace_file(const qel::util::filesystem::Path& file, const std::string& content) {
    const std::filesystem::path name = qel::util::filesystem::native(file);
    Replacement replacement(std::filesystem::canonical(name).string(), name.string());
    replacement.fill(content);
    replacement.keep_attributes();
    replacement.take_its_place();
}

} // namespace orvane
