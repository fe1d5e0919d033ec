// Exactly what the library needs of qel::platform, in the shortest form that works: see docs/replacing-the-platform.md.
// Links are not followed, and texts are treated as ASCII: enough to build, to start and to be refused.
#pragma once

#include <boost/optional/optional.hpp>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <istream>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace qel::i18n {

inline std::string ustring_to_utf8(std::u16string_view text) {
    std::string result;
    for (const char16_t unit : text)
        result += unit < 0x80 ? static_cast<char>(unit) : '?';
    return result;
}
inline std::u16string utf8_to_ustring(std::string_view text) {
    return std::u16string(text.begin(), text.end());
}
inline std::string ustring_to_term(std::u16string_view text) {
    return ustring_to_utf8(text);
}

} // namespace qel::i18n

namespace qel::util::filesystem {

class Path {
public:
    Path() noexcept = default;
    explicit Path(std::u16string text) noexcept : text_(std::move(text)) {}
    const std::u16string& text() const noexcept { return text_; }
    bool operator==(const Path& other) const noexcept { return text_ == other.text_; }
    bool operator<(const Path& other) const noexcept {
        return std::filesystem::path(text_) < std::filesystem::path(other.text_);
    }

private:
    std::u16string text_;
};

inline std::filesystem::path native(const Path& path) {
    return path.text();
}

class Canonicalizer {
public:
    bool is_same_or_below(const Path& path, const Path& root) {
        const auto inner = std::filesystem::path(path.text()).lexically_normal();
        const auto outer = std::filesystem::path(root.text()).lexically_normal();
        return std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end()).first == outer.end();
    }
};

class scoped_file {
public:
    explicit scoped_file(Path path) noexcept : path_(std::move(path)) {}
    scoped_file(scoped_file&& other) noexcept : path_(std::exchange(other.path_, Path())) {}
    scoped_file& operator=(scoped_file&& other) noexcept {
        std::swap(path_, other.path_);
        return *this;
    }
    ~scoped_file() {
        std::error_code ignored;
        if (!path_.text().empty()) std::filesystem::remove(native(path_), ignored);
    }
    const Path& path() const noexcept { return path_; }

private:
    Path path_;
};

} // namespace qel::util::filesystem

namespace qel::i18n {

inline util::filesystem::Path operator/(const util::filesystem::Path& directory,
                                        std::u16string_view component) {
    return util::filesystem::Path(directory.text() + u'/' + std::u16string(component));
}

} // namespace qel::i18n

namespace qel::util {

class storage_size {
public:
    std::uint64_t bytes() const noexcept { return bytes_; }
    friend std::istream& operator>>(std::istream& in, storage_size& size) { return in >> size.bytes_; }

private:
    std::uint64_t bytes_ = 0;
};

} // namespace qel::util

namespace qel::util::ssl {

enum class SslVerifyPeerMode { no_verify_peer, verify_peer_require_peer_cert };
constexpr std::string_view to_text(SslVerifyPeerMode mode) {
    return mode == SslVerifyPeerMode::no_verify_peer ? "no-verify-peer" : "verify-peer-require-peer-cert";
}
inline std::istream& operator>>(std::istream& in, SslVerifyPeerMode& mode) {
    std::string word;
    in >> word;
    mode = SslVerifyPeerMode{word == "verify-peer-require-peer-cert"};
    return in;
}
using AccessMap = std::map<std::string, std::set<std::u16string>>;

class SslContext {
public:
#define QEL_SSL_FIELD(name, ...)                                                                             \
    const __VA_ARGS__& name() const noexcept {                                                               \
        return name##_;                                                                                      \
    }                                                                                                        \
    void name(__VA_ARGS__ value) noexcept {                                                                  \
        name##_ = std::move(value);                                                                          \
    }                                                                                                        \
    __VA_ARGS__ name##_{};
#include "qel/util/ssl_context_fields.def"
    bool operator==(const SslContext& other) const {
        return allowed_clients_ == other.allowed_clients_;
    }
    bool operator<(const SslContext& other) const {
        return allowed_clients_ < other.allowed_clients_;
    }
};

} // namespace qel::util::ssl

namespace qel::msgid {

using Argument = std::variant<std::string, std::u16string>;
struct MessageID {
    std::string catalog, id;
    std::vector<Argument> arguments;
};
class IMsgIDException {
public:
    virtual ~IMsgIDException() = default;
};
class MsgIDException : public std::runtime_error, public IMsgIDException {
public:
    explicit MsgIDException(const MessageID& message)
        : std::runtime_error(message.catalog + ':' + message.id) {}
};
inline void notify_legacy_error_hook(const IMsgIDException&) {}

} // namespace qel::msgid
