#include "parsing/fast_paths.hpp"

namespace qel::config {

optional<std::uint64_t> plain_number(std::u16string_view text) noexcept {
    constexpr std::size_t always_fit = std::numeric_limits<std::int64_t>::digits10;
    if (text.empty() || text.size() > always_fit) return {};
    std::uint64_t value = 0;
    for (const char16_t c : text) {
        const auto digit = static_cast<unsigned>(c - u'0');
        if (digit > 9) return {};
        value = value * 10 + digit;
    }
    return value;
}

unsigned short port_from(std::u16string_view text) {
    // A sign is allowed: "-1" is 65535.
    constexpr int most = std::numeric_limits<unsigned short>::max();
    const int number = number_from<int>(text);
    if (number < -most || number > most) throw boost::bad_lexical_cast();
    return static_cast<unsigned short>(number);
}

} // namespace qel::config
