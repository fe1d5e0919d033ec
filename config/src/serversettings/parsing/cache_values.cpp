// Cache definitions, and their two failures.
#include "parsing/cache_values.hpp"

#include "errors/message_ids.hpp"
#include "parsing/fast_paths.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace qel::config {
namespace {

/// Passes the failure to the platform's hook, then throws it.
template <class Failure>
[[noreturn]] void raise(const Failure& failure) {
    msgid::notify_legacy_error_hook(failure);
    throw failure;
}

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
    // A ':' anywhere in the definition counts, so the provider may contain one if the rest does not.
    if (std::count(value.begin(), value.end(), u'@') != 1) refuse();
    if (std::count(value.begin(), value.end(), u':') > 1) refuse();

    const auto at = value.find(u'@');
    std::u16string_view port = value.substr(at + 1);
    std::u16string_view host = u"localhost";
    if (const auto colon = port.find(u':'); colon != port.npos) {
        host = port.substr(0, colon);
        port.remove_prefix(colon + 1);
    }
    if (!std::all_of(host.begin(), host.end(), is_host_character)) refuse();

    CacheSettings cache;
    cache.provider() = value.substr(0, at);
    cache.host() = host;
    if (!read_port(port, cache.port())) refuse();
    return cache;
}

CacheSettings parse_start_cache(std::u16string_view value) {
    CacheSettings cache = parse_cache_settings(value);
    if (cache.host() != u"localhost" && cache.host() != u"127.0.0.1") {
        raise(StartCacheLocalhost(i18n::ustring_to_term(cache.host())));
    }
    cache.manage(true);
    return cache;
}

} // namespace qel::config
