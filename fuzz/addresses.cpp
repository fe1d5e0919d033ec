// An accepted cache or listener can be written from the record and read back.
#include "fuzz.hpp"

void examine(std::string_view bytes) {
    const std::u16string value = text_from(bytes);
    auto attached = accepted(option::attach_cache(), value);
    if (attached) {
        CacheSettings& cache = attached->cache_list()->list().at(0);
        // The definition has at most one ':': if it is in the provider, there can be no host.
        const auto host = cache.provider().find(u':') == std::u16string::npos ? cache.host() + u':' : u"";
        const auto address = cache.provider() + u'@' + host + utf8_to_ustring(std::to_string(cache.port()));
        promise(accepted(option::attach_cache(), address) == attached, "a cache is read back");
        cache.manage(true);
        if (cache.host() != u"localhost" && cache.host() != u"127.0.0.1") attached.reset();
    }
    promise(accepted(option::start_cache(), value) == attached,
            "a cache is started here, attached to anywhere");

    const auto listening = accepted(option::http(), value);
    if (!listening) return;
    const HttpSettings& http = *listening->http();
    promise(http.host().has_value() == (value.find(u':') != value.npos), "a colon ends a host");
    const auto host = http.host() ? *http.host() + u':' : u"";
    promise(accepted(option::http(), host + utf8_to_ustring(std::to_string(http.port()))) == listening,
            "a listener is read back");
}
