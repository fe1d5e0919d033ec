// The protocols that a list names.
#include "preflight/tls/protocols.hpp"

#include "text/lists.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane::preflight {
namespace {

struct Protocol {
    std::string_view name;
    unsigned bits;
};

// clang-format off
constexpr Protocol protocols[] = {
    {"sslv2",   ssl2},
    {"sslv3",   ssl3},
    {"tlsv1",   tls1_0},
    {"tlsv1.0", tls1_0},
    {"tlsv1.1", tls1_1},
    {"tlsv1.2", tls1_2},
    {"tlsv1.3", tls1_3},
    {"all",     ssl3 | tls1_0 | tls1_1 | tls1_2 | tls1_3},
};
// clang-format on

} // namespace

std::string name_in(std::string_view item) {
    return std::string(item.substr(std::min(item.find_first_not_of("!+-"), item.size())));
}

ProtocolList read_protocols(std::string_view list) {
    ProtocolList read;
    for (const std::string_view item : split(list, ":, ;|")) {
        if (item.empty()) continue;
        const std::string name = qel::i18n::ustring_to_utf8(lower(qel::i18n::utf8_to_ustring(name_in(item))));
        const auto* const found = std::ranges::find(protocols, name, &Protocol::name);
        if (found == std::end(protocols))
            read.unknown.emplace_back(item);
        else if (item.front() == '!' || item.front() == '-')
            read.offered &= ~found->bits;
        else
            read.offered |= found->bits;
    }
    return read;
}

} // namespace orvane::preflight
