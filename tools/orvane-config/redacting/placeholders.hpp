// What stands for what is private.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace orvane::redacting {

/// Gives each text another one: equal ones for equal ones, and never one for two.
class Placeholders {
public:
    /// Of letters, or of six digits or more for digits. It has what rules look at: a digit in front, capitals only, letters
    /// that are drawn like those of another alphabet.
    std::u16string word(std::u16string_view text);

    /// A name below example.org. Two that differ only in case do so afterwards.
    std::u16string host(std::u16string_view name);
    /// The one of a host that was replaced before; null: it was none.
    const std::u16string* known_host(std::u16string_view name) const;

    /// An address that is reserved for documentation; after 762 of IPv4, no address.
    std::u16string ipv4(std::u16string_view address);
    std::u16string ipv6(std::u16string_view address);

private:
    using Map = std::unordered_map<std::u16string, std::u16string>;

    Map words_{}, addresses_{}, hosts_{};
    Map lower_hosts_{}; ///< in lower case, with the placeholder of the first one until a second one is written otherwise
};

} // namespace orvane::redacting
