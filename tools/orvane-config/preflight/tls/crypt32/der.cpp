// The few elements of DER that Windows does not take apart: those of private keys.
#include "preflight/tls/crypt32/der.hpp"

#include <bit>

namespace orvane::preflight {
namespace {

constexpr std::string_view rsa = "\x2a\x86\x48\x86\xf7\x0d\x01\x01\x01",
                           curve = "\x2a\x86\x48\xce\x3d\x02\x01";

unsigned byte_of(std::string_view der, std::size_t at) {
    return static_cast<unsigned char>(der[at]);
}

/// Version, modulus, exponent, and what only the owner knows.
std::optional<PrivateKey> rsa_key_in(std::string_view fields) {
    take_der(fields, der_integer);
    const std::string_view begin = fields;
    if (!take_der(fields, der_integer) || !take_der(fields, der_integer)) return std::nullopt;
    const std::string_view both = begin.substr(0, begin.size() - fields.size());
    if (!take_der(fields, der_integer)) return std::nullopt;
    return PrivateKey{std::string(both)};
}

/// Version, the secret number, then perhaps the curve and the point.
std::optional<PrivateKey> curve_key_in(std::string_view fields) {
    if (!take_der(fields, der_integer) || !take_der(fields, der_bytes)) return std::nullopt;
    take_der(fields, der_first_optional);
    auto point = take_der(fields, der_second_optional);
    const auto bits = point ? take_der(*point, der_bits) : std::nullopt;
    if (!bits || bits->empty()) return PrivateKey{};
    return PrivateKey{std::string(bits->substr(1))}; // how many bits of the last byte do not count: none
}

std::optional<PrivateKey> wrapped_key_in(std::string_view type, std::string_view key) {
    if (type != rsa && type != curve) return PrivateKey{};
    auto fields = take_der(key, der_sequence);
    if (!fields) return std::nullopt;
    return type == rsa ? rsa_key_in(*fields) : curve_key_in(*fields);
}

} // namespace

std::optional<std::string_view> take_der(std::string_view& der, unsigned char kind) {
    if (der.size() < 2 || byte_of(der, 0) != kind) return std::nullopt;
    std::size_t size = byte_of(der, 1), head = 2;
    if (constexpr std::size_t longest = 4, is_long = 0x80; size >= is_long) {
        const std::size_t count = size - is_long;
        if (count > longest || der.size() < head + count) return std::nullopt;
        for (size = 0; head < 2 + count; ++head)
            size = size << 8 | byte_of(der, head);
    }
    if (der.size() - head < size) return std::nullopt;
    const std::string_view content = der.substr(head, size);
    der.remove_prefix(head + size);
    return content;
}

int bits_of_number(std::string_view number) {
    while (!number.empty() && number.front() == 0)
        number.remove_prefix(1);
    if (number.empty()) return 0;
    return static_cast<int>(8 * (number.size() - 1)) + std::bit_width(byte_of(number, 0));
}

std::optional<PrivateKey> private_key_in(std::string_view der) {
    auto fields = take_der(der, der_sequence);
    if (!fields) return std::nullopt;
    std::string_view rest = *fields;
    if (!take_der(rest, der_integer)) return std::nullopt;
    if (rest.starts_with(char{der_integer})) return rsa_key_in(*fields);
    if (rest.starts_with(char{der_bytes})) return curve_key_in(*fields);
    auto algorithm = take_der(rest, der_sequence);
    const auto key = take_der(rest, der_bytes);
    const auto type = algorithm ? take_der(*algorithm, der_identifier) : std::nullopt;
    if (!type || !key) return std::nullopt;
    return wrapped_key_in(*type, *key);
}

} // namespace orvane::preflight
