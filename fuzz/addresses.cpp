// A cache or listener that is accepted can be written from the record, and read back.
#include "fuzz.hpp"

void qel::config::fuzz::examine(std::string_view bytes) {
    const std::u16string value = text_from(bytes);
    const auto written = [](const auto& address) {
        return address.host() + u':' + utf8_to_ustring(std::to_string(address.port()));
    };
    auto attached = accepted(option::attach_cache(), value);
    if (attached) {
        const CacheSettings cache = attached->cache_list()->list().at(0);
        // The definition has one ':' at most: with one in the provider, none is left to name a host.
        const bool colon = cache.provider().find(u':') != std::u16string::npos;
        const auto address = colon ? written(cache).substr(cache.host().size() + 1) : written(cache);
        promise(accepted(option::attach_cache(), cache.provider() + u'@' + address) == attached,
                "a cache is read back");
        attached->cache_list()->list()[0].manage(true);
        if (cache.host() != u"localhost" && cache.host() != u"127.0.0.1") attached.reset();
    }
    promise(accepted(option::start_cache(), value) == attached,
            "a cache is started here and attached to anywhere");

    const auto listening = accepted(option::http(), value);
    if (!listening) return;
    HttpSettings http = *listening->http();
    promise(http.host().has_value() == (value.find(u':') != value.npos), "a colon ends a host");
    const auto port = utf8_to_ustring(std::to_string(http.port()));
    promise(accepted(option::http(), http.host() ? *http.host() + u':' + port : port) == listening,
            "a listener is read back");
}
