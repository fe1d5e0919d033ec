// Cache definitions, and the two failures they can have.
#include "common_forms.hpp"
#include "message_ids.hpp"
#include "structured_values.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace qel::config {
namespace {

constexpr char config_catalog[] = "ZEP:server:Config";

/// Shows the failure to the platform's hook, then throws it.
template <class Failure>
[[noreturn]] void raise(const Failure& failure) {
    msgid::notify_legacy_error_hook(failure);
    throw failure;
}

bool is_host_character(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'.';
}

} // namespace

CacheProviderBadFormat::CacheProviderBadFormat(std::u16string definition)
    : MsgIDException(msgid::MessageID{config_catalog, "CacheProviderBadFormat", {std::move(definition)}}) {}

StartCacheLocalhost::StartCacheLocalhost(std::string host)
    : MsgIDException(msgid::MessageID{config_catalog, "StartCacheLocalhost", {std::move(host)}}) {}

CacheSettings parse_cache_settings(std::u16string value) {
    // The ':' is counted in the whole definition, so a provider may hold one when the rest does not.
    if (std::count(value.begin(), value.end(), u'@') != 1) raise(CacheProviderBadFormat(value));
    if (std::count(value.begin(), value.end(), u':') > 1) raise(CacheProviderBadFormat(value));

    const auto at = value.find(u'@');
    const std::u16string provider = value.substr(0, at);
    std::u16string port = value.substr(at + 1);
    std::u16string host = u"localhost";
    if (const auto colon = port.find(u':'); colon != std::u16string::npos) {
        host = port.substr(0, colon);
        port.erase(0, colon + 1);
    }
    if (!std::all_of(host.begin(), host.end(), is_host_character)) raise(CacheProviderBadFormat(value));
    try {
        return {false, provider, number_from<unsigned short>(port), host};
    } catch (const boost::bad_lexical_cast&) {
        raise(CacheProviderBadFormat(value));
    }
}

CacheSettings parse_start_cache(std::u16string value) {
    CacheSettings cache = parse_cache_settings(std::move(value));
    if (cache.host() != u"localhost" && cache.host() != u"127.0.0.1") {
        raise(StartCacheLocalhost(i18n::ustring_to_term(cache.host())));
    }
    cache.manage(true);
    return cache;
}

} // namespace qel::config
