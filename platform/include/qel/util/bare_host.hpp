// The host of a listener without the brackets of an IPv6 address.
#pragma once

#include <string_view>

namespace qel::util {

/// `host` without the brackets around it, if there are any: `[::1]` gives `::1`. The record keeps them, as
/// `--http [::1]:80` was given; a resolver refuses them. The result refers to the text of `host`.
[[nodiscard]] constexpr std::u16string_view bare_host(std::u16string_view host) noexcept {
    if (host.size() > 2 && host.front() == u'[' && host.back() == u']')
        host = host.substr(1, host.size() - 2);
    return host;
}

} // namespace qel::util
