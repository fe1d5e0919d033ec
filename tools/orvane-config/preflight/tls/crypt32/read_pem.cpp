// PEM without OpenSSL.
#include "preflight/tls/crypt32/certificates.hpp"
#include "preflight/tls/crypt32/der.hpp"
#include "preflight/tls/pem.hpp"

namespace orvane::preflight {
namespace {

constexpr std::string_view begin_mark = "-----BEGIN ", end_mark = "-----END ", dashes = "-----";

std::string_view take_line(std::string_view& text) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    while (!line.empty() && static_cast<unsigned char>(line.back()) <= ' ')
        line.remove_suffix(1);
    return line;
}

bool decode(const std::string& base64, std::string& bytes) {
    DWORD size = 0;
    const auto length = static_cast<DWORD>(base64.size());
    if (!CryptStringToBinaryA(base64.data(), length, CRYPT_STRING_BASE64, nullptr, &size, nullptr, nullptr))
        return false;
    bytes.resize(size);
    return CryptStringToBinaryA(base64.data(), length, CRYPT_STRING_BASE64,
                                reinterpret_cast<BYTE*>(bytes.data()), &size, nullptr, nullptr) != 0;
}

/// Reads a block after its first line; why it cannot be read, or nothing.
std::string read_block(std::string_view label, std::string_view& text, PemFile& pem) {
    PemBlock block{content_of(label), label.starts_with("ENCRYPTED"), {}};
    std::string base64;
    for (;;) {
        if (text.empty()) return "no end line";
        const std::string_view line = take_line(text);
        if (line.starts_with(end_mark)) {
            if (line.substr(end_mark.size()) != std::string(label) + std::string(dashes))
                return "bad end line";
            break;
        }
        // Lines about how it is encrypted come before the data.
        if (line.find(':') != line.npos)
            block.is_encrypted = true;
        else
            base64 += line;
    }
    if (base64.empty() || !decode(base64, block.der)) return "bad base64";
    pem.blocks.push_back(std::move(block));
    return {};
}

} // namespace

PemFile read_pem(std::string_view text) {
    constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
    if (text.starts_with(byte_order_mark)) text.remove_prefix(byte_order_mark.size());
    PemFile pem;
    while (!text.empty() && pem.damage.empty()) {
        std::string_view line = take_line(text);
        if (!line.starts_with(begin_mark) || !line.ends_with(dashes)) continue;
        line.remove_prefix(begin_mark.size());
        line.remove_suffix(dashes.size());
        pem.damage = read_block(line, text, pem);
    }
    return pem;
}

Der der_in(const std::string& text) {
    if (certificate_in(text)) return Der::certificate;
    if (private_key_in(text)) return Der::key;
    std::string_view rest = text;
    auto fields = take_der(rest, der_sequence);
    const auto version = fields ? take_der(*fields, der_integer) : std::nullopt;
    return version == std::string_view("\3") ? Der::pkcs12 : Der::none;
}

} // namespace orvane::preflight
