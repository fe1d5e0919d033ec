// argagg, with one value after each flag. It keeps pointers to the arguments; what is asked for is converted. Its flags
// contain no '_'.
#include "peer.hpp"

#include <argagg/argagg.hpp>

#include <algorithm>

namespace qel::config::bench {
namespace {

template <std::size_t size>
constexpr Narrow<size> hyphened(Narrow<size> flag) {
    std::ranges::replace(flag.with_dashes, '_', '-');
    return flag;
}

namespace flags {
#define ZEP_FLAG(name, text) constexpr auto name = hyphened(narrow::name);
#include "qel/config/flags.def"
} // namespace flags

using Found = argagg::option_results;

void take(const Found& found, bool& value) {
    value = found.count() != 0;
}

void take(const Found& found, std::string& value) {
    if (found.count() != 0) value = found.all.back().arg;
}

void take(const Found& found, std::uint64_t& value) {
    if (found.count() != 0) value = static_cast<std::uint64_t>(found.as<long long>());
}

void take(const Found& found, std::vector<std::string>& value) {
    for (const auto& one : found.all)
        value.emplace_back(one.arg);
}

} // namespace

void parse_with_argagg(int argc, char** argv, Values& values) {
    const argagg::parser parser{{
#define ZEP_FLAG(name, text) {#name, {flags::name.with_dashes}, "", kind_of(#name) == Kind::on_off ? 0U : 1U},
#include "qel/config/flags.def"
    }};
    const argagg::parser_results found = parser.parse(argc, argv);
#define ZEP_FLAG(name, text) take(found[#name], values.name);
#include "qel/config/flags.def"
}

std::string argagg_token(const std::string& token) {
    return token == narrow::detach_console.with_dashes ? flags::detach_console.with_dashes : token;
}

} // namespace qel::config::bench
