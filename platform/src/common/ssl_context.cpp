// SslContext from its list of fields, and the mode's text form.
#include "qel/util/ssl_context.hpp"

#include <istream>
#include <utility>

namespace qel::util::ssl {

std::istream& operator>>(std::istream& in, SslVerifyPeerMode& mode) {
    std::string word;
    if (!(in >> word)) return in;
    for (const auto known :
         {SslVerifyPeerMode::no_verify_peer, SslVerifyPeerMode::verify_peer_require_peer_cert}) {
        if (word != to_text(known)) continue;
        mode = known;
        return in;
    }
    in.setstate(std::ios_base::failbit);
    return in;
}

SslContext::SslContext() = default;
SslContext::SslContext(const SslContext&) = default;
SslContext::SslContext(SslContext&&) noexcept = default;
SslContext& SslContext::operator=(const SslContext&) = default;
SslContext& SslContext::operator=(SslContext&&) noexcept = default;
SslContext::~SslContext() = default;

#define QEL_SSL_FIELD(name, ...)                                                                             \
    const __VA_ARGS__& SslContext::name() const noexcept {                                                   \
        return name##_;                                                                                      \
    }                                                                                                        \
    void SslContext::name(__VA_ARGS__ value) noexcept {                                                      \
        name##_ = std::move(value);                                                                          \
    }
#include "qel/util/ssl_context_fields.def"

bool SslContext::operator==(const SslContext& other) const noexcept {
#define QEL_SSL_FIELD(name, ...)                                                                             \
    if (!(name##_ == other.name##_)) return false;
#include "qel/util/ssl_context_fields.def"
    return true;
}

bool SslContext::operator<(const SslContext& other) const noexcept {
    // A field that is neither less nor equal ends the comparison: two spellings of one path are such a pair.
#define QEL_SSL_FIELD(name, ...)                                                                             \
    if (name##_ < other.name##_) return true;                                                                \
    if (!(name##_ == other.name##_)) return false;
#include "qel/util/ssl_context_fields.def"
    return false;
}

} // namespace qel::util::ssl
