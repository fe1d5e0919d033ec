// getopt_long of the C library, with the usual loop around it.
#include "peer.hpp"

#include <cstdlib>
#include <stdexcept>

#include <getopt.h>

namespace qel::config::bench {
namespace {

void take(bool& value) {
    value = true;
}
void take(std::string& value) {
    value = optarg;
}
void take(std::uint64_t& value) {
    char* end = nullptr;
    value = std::strtoull(optarg, &end, 10);
    if (end == optarg || *end != '\0') throw std::invalid_argument(optarg);
}
void take(std::vector<std::string>& value) {
    value.emplace_back(optarg);
}

enum Flag {
    unknown, // getopt_long's own results are characters
    first = 1000,
#define ZEP_FLAG(name, text) name,
#include "qel/config/flags.def"
};

constexpr option options[] = {
#define ZEP_FLAG(name, text)                                                                                 \
    {narrow::name.bare(), kind_of(#name) == Kind::on_off ? no_argument : required_argument, nullptr,         \
     Flag::name},
#include "qel/config/flags.def"
    {}};

} // namespace

void parse_with_getopt(int argc, char** argv, Values& values) {
    optind = 0; // starts again
    for (int flag; (flag = getopt_long(argc, argv, "", options, nullptr)) != -1;) {
        switch (flag) {
#define ZEP_FLAG(name, text)                                                                                 \
    case Flag::name:                                                                                         \
        take(values.name);                                                                                   \
        break;
#include "qel/config/flags.def"
        default:
            throw std::invalid_argument(argv[optind - 1]);
        }
    }
}

} // namespace qel::config::bench
