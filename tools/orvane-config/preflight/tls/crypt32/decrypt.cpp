// Encrypted keys, opened by the system: as tools have written them for twenty years, with PBES2.
#include "preflight/tls/crypt32/decrypt.hpp"

#include "preflight/tls/crypt32/der.hpp"

#include <windows.h>

#include <bcrypt.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>

namespace orvane::preflight {
namespace {

constexpr std::string_view pbes2 = "\x2a\x86\x48\x86\xf7\x0d\x01\x05\x0d",
                           pbkdf2 = "\x2a\x86\x48\x86\xf7\x0d\x01\x05\x0c",
                           hmac_sha1 = "\x2a\x86\x48\x86\xf7\x0d\x02\x07";

struct Digest {
    std::string_view id;
    const wchar_t* name;
};
constexpr Digest prf_digests[] = {
    {hmac_sha1, BCRYPT_SHA1_ALGORITHM},
    {"\x2a\x86\x48\x86\xf7\x0d\x02\x09", BCRYPT_SHA256_ALGORITHM},
    {"\x2a\x86\x48\x86\xf7\x0d\x02\x0a", BCRYPT_SHA384_ALGORITHM},
    {"\x2a\x86\x48\x86\xf7\x0d\x02\x0b", BCRYPT_SHA512_ALGORITHM},
};

/// AES in a chain of blocks.
struct Cipher {
    std::string_view id;
    std::size_t key_size;
};
constexpr Cipher aes_ciphers[] = {
    {"\x60\x86\x48\x01\x65\x03\x04\x01\x02", 16},
    {"\x60\x86\x48\x01\x65\x03\x04\x01\x16", 24},
    {"\x60\x86\x48\x01\x65\x03\x04\x01\x2a", 32},
};

struct Scheme {
    const Digest* digest;
    const Cipher* cipher;
    std::string salt, start, data;
    std::uint64_t rounds;
};

struct Algorithm {
    std::string_view id, parameters;
};

std::optional<Algorithm> take_algorithm(std::string_view& der) {
    auto fields = take_der(der, der_sequence);
    const auto id = fields ? take_der(*fields, der_identifier) : std::nullopt;
    if (!id) return std::nullopt;
    return Algorithm{*id, *fields};
}

template <class Row, std::size_t Count>
const Row* row_with(const Row (&rows)[Count], std::string_view id) {
    const auto row = std::ranges::find(rows, id, &Row::id);
    return row == std::end(rows) ? nullptr : row;
}

/// Salt and rounds, then perhaps the size of the key, which the cipher knows, and the digest.
bool read_derivation(std::string_view parameters, Scheme& scheme) {
    auto fields = take_der(parameters, der_sequence);
    const auto salt = fields ? take_der(*fields, der_bytes) : std::nullopt;
    const auto rounds = salt ? take_der(*fields, der_integer) : std::nullopt;
    if (!rounds || rounds->size() > sizeof scheme.rounds) return false;
    scheme.salt = *salt;
    scheme.rounds = 0;
    for (const char byte : *rounds)
        scheme.rounds = scheme.rounds << 8 | static_cast<unsigned char>(byte);
    take_der(*fields, der_integer);
    const auto digest = take_algorithm(*fields);
    scheme.digest = row_with(prf_digests, digest ? digest->id : hmac_sha1);
    return scheme.digest != nullptr && scheme.rounds != 0;
}

std::optional<Scheme> scheme_of(std::string_view der) {
    auto fields = take_der(der, der_sequence);
    const auto outer = fields ? take_algorithm(*fields) : std::nullopt;
    const auto data = outer ? take_der(*fields, der_bytes) : std::nullopt;
    if (!data || outer->id != pbes2) return std::nullopt;
    std::string_view rest = outer->parameters;
    auto both = take_der(rest, der_sequence);
    const auto derivation = both ? take_algorithm(*both) : std::nullopt;
    const auto cipher = derivation ? take_algorithm(*both) : std::nullopt;
    if (!cipher || derivation->id != pbkdf2) return std::nullopt;
    std::string_view start = cipher->parameters;
    constexpr std::size_t block = 16;
    Scheme scheme{nullptr,
                  row_with(aes_ciphers, cipher->id),
                  {},
                  std::string(take_der(start, der_bytes).value_or("")),
                  std::string(*data),
                  0};
    if (scheme.cipher == nullptr || scheme.start.size() != block ||
        !read_derivation(derivation->parameters, scheme))
        return std::nullopt;
    return scheme;
}

struct ClosesProvider {
    void operator()(void* provider) const { BCryptCloseAlgorithmProvider(provider, 0); }
};
using Provider = std::unique_ptr<void, ClosesProvider>;

Provider provider(const wchar_t* name, ULONG flags) {
    BCRYPT_ALG_HANDLE opened = nullptr;
    return Provider(BCryptOpenAlgorithmProvider(&opened, name, nullptr, flags) == 0 ? opened : nullptr);
}

struct DestroysKey {
    void operator()(void* key) const { BCryptDestroyKey(key); }
};

BYTE* raw(const std::string& text) {
    return reinterpret_cast<BYTE*>(const_cast<char*>(text.data()));
}

ULONG length_of(const std::string& text) {
    return static_cast<ULONG>(text.size());
}

/// Empty: the system cannot.
std::string derived(const Scheme& scheme, const std::string& phrase) {
    const Provider digest = provider(scheme.digest->name, BCRYPT_ALG_HANDLE_HMAC_FLAG);
    std::string key(scheme.cipher->key_size, '\0');
    const bool is_made = digest && BCryptDeriveKeyPBKDF2(digest.get(), raw(phrase), length_of(phrase),
                                                         raw(scheme.salt), length_of(scheme.salt),
                                                         scheme.rounds, raw(key), length_of(key), 0) == 0;
    return is_made ? key : std::string();
}

} // namespace

Decrypted decrypted(std::string_view der, const std::string& phrase) {
    const auto scheme = scheme_of(der);
    if (!scheme) return {};
    const Provider aes = provider(BCRYPT_AES_ALGORITHM, 0);
    std::string secret = derived(*scheme, phrase), start = scheme->start, plain(scheme->data.size(), '\0');
    BCRYPT_KEY_HANDLE made = nullptr;
    if (!aes || secret.empty() ||
        BCryptGenerateSymmetricKey(aes.get(), &made, nullptr, 0, raw(secret), length_of(secret), 0) != 0)
        return {};
    const std::unique_ptr<void, DestroysKey> key(made);
    ULONG length = 0;
    const bool is_open = BCryptDecrypt(made, raw(scheme->data), length_of(scheme->data), nullptr, raw(start),
                                       length_of(start), raw(plain), length_of(plain), &length, 0) == 0;
    // The padding is the form of the key's own: what follows its end does not count.
    std::string_view rest = plain;
    const bool is_key = is_open && take_der(rest, der_sequence) && rest.size() <= start.size();
    return {true, is_key ? plain : std::string()};
}

} // namespace orvane::preflight
