// Cache definitions, and their two failures.
#include "parsing/cache_values.hpp"

#include "errors/message_ids.hpp"
#include "parsing/fast_paths.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <iterator>

namespace qel::config {
namespace {

/// Passes the failure to the platform's hook, then throws it.
template <class Failure>
[[noreturn]] void raise(const Failure& failure) {
    msgid::notify_legacy_error_hook(failure);
    throw failure;
}

/// What a cache to start may have as its host. The first is the default of all caches.
constexpr std::u16string_view local_hosts[] = {u"localhost", u"127.0.0.1"};

bool is_host_character(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'.';
}

/// The port that `text` is, if it is one. The caller throws, not the catch handler: there the platform's hook would see
/// the cast's exception as the current one.
bool read_port(std::u16string_view text, unsigned short& port) {
    try {
        port = port_from(text);
        return true;
    } catch (const boost::bad_lexical_cast&) {
        return false;
    }
}

} // namespace

CacheSettings parse_cache_settings(std::u16string_view value) {
    const auto refuse = [value] { raise(CacheProviderBadFormat(std::u16string(value))); };
    const auto the_only = [&](char16_t letter) {
        const auto found = std::find(value.begin(), value.end(), letter);
        if (found != value.end() && std::find(found + 1, value.end(), letter) != value.end()) refuse();
        return found;
    };
    // A ':' anywhere in the definition counts, so the provider may contain one if the rest does not.
    const auto at = the_only(u'@'), colon = the_only(u':');
    if (at == value.end()) refuse();
    const bool has_host = colon > at && colon != value.end();
    const std::u16string_view host = has_host ? std::u16string_view(at + 1, colon) : local_hosts[0];
    const std::u16string_view port((has_host ? colon : at) + 1, value.end());
    if (!std::all_of(host.begin(), host.end(), is_host_character)) refuse();

    CacheSettings cache;
    cache.provider() = std::u16string(value.begin(), at);
    cache.host() = std::u16string(host);
    if (!read_port(port, cache.port())) refuse();
    return cache;
}

CacheSettings parse_start_cache(std::u16string_view value) {
    CacheSettings cache = parse_cache_settings(value);
    if (std::ranges::find(local_hosts, cache.host()) == std::end(local_hosts))
        raise(StartCacheLocalhost(i18n::ustring_to_term(cache.host())));
    cache.manage(true);
    return cache;
}

} // namespace qel::config
