// The TLS settings of one HTTPS listener, as plain values.
#pragma once

#include "qel/util/path.hpp"
#include "qel/util/platform_export.hpp"

#include <boost/optional/optional.hpp>

#include <iosfwd>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace qel::util::ssl {

/// Whether a client must present a certificate.
enum class SslVerifyPeerMode { no_verify_peer = 0, verify_peer_require_peer_cert = 1 };

/// The mode's name, "no-verify-peer" or "verify-peer-require-peer-cert".
constexpr std::string_view to_text(SslVerifyPeerMode mode) noexcept {
    return mode == SslVerifyPeerMode::no_verify_peer ? "no-verify-peer" : "verify-peer-require-peer-cert";
}

/// Reads one word and compares it with the two names, exactly. If it matches neither, sets the fail bit and leaves
/// `mode` unchanged. Throws only if the stream has exceptions enabled; `mode` is unchanged then.
ZEP_CONFIG_PLATFORM_API std::istream& operator>>(std::istream& in, SslVerifyPeerMode& mode);

/// Maps a client's name to the archives that it may use. An empty set allows all archives.
using AccessMap = std::map<std::string, std::set<std::u16string>>;

ZEP_CONFIG_PLATFORM_QUIET_BEGIN
/// TLS settings. A default-constructed context has every path and text unset, every switch off, no clients
/// and the mode "no-verify-peer". Fields, getters and setters come from ssl_context_fields.def.
///
/// `==` compares all fields; `<` is lexicographic over them in the order of the list.
class ZEP_CONFIG_PLATFORM_API SslContext {
public:
    /// Nothing set. Throws at most std::bad_alloc.
    SslContext();
    ///@{
    /// Copies throw std::bad_alloc; assignment goes field by field.
    SslContext(const SslContext&);
    SslContext(SslContext&&) noexcept;
    SslContext& operator=(const SslContext&);
    SslContext& operator=(SslContext&&) noexcept;
    ///@}
    ~SslContext();

#define QEL_SSL_FIELD(name, ...)                                                                             \
    /** The field, to read. */                                                                               \
    const __VA_ARGS__& name() const noexcept;                                                                \
    /** Sets the field. */                                                                                   \
    void name(__VA_ARGS__ value) noexcept;
#include "qel/util/ssl_context_fields.def"

    /// Whether all fields are equal.
    bool operator==(const SslContext&) const noexcept;
    /// Compares by the first field that differs.
    bool operator<(const SslContext&) const noexcept;

private:
#define QEL_SSL_FIELD(name, ...) __VA_ARGS__ name##_{};
#include "qel/util/ssl_context_fields.def"
};
ZEP_CONFIG_PLATFORM_QUIET_END

} // namespace qel::util::ssl
