// The few elements of DER that Windows does not take apart: those of private keys.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvane::preflight {

constexpr unsigned char der_integer = 0x02, der_bits = 0x03, der_bytes = 0x04, der_identifier = 0x06,
                        der_sequence = 0x30, der_first_optional = 0xa0, der_second_optional = 0xa1;

/// Takes the element at the beginning, if it is of this kind: what it contains. None, and nothing is taken: it is not.
std::optional<std::string_view> take_der(std::string_view& der, unsigned char kind);

/// The size of a number that an element contains.
int bits_of_number(std::string_view number);

struct PrivateKey {
    /// As in the certificate; none: it is not in the file, or the type is unknown.
    std::optional<std::string> public_part{};
};

/// PKCS #8 that is not encrypted, PKCS #1 or SEC 1. None: it is damaged.
std::optional<PrivateKey> private_key_in(std::string_view der);

} // namespace orvane::preflight
