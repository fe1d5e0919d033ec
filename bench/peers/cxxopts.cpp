// Values that are lists are not split at commas here, as the server's are not.
#define CXXOPTS_VECTOR_DELIMITER '\0'
#include <cxxopts.hpp>

#include "peer.hpp"

namespace qel::config::bench {

void parse_with_cxxopts(int argc, char** argv, Values& values) {
    cxxopts::Options options("orvane");
    auto add = options.add_options();
#define ZEP_FLAG(name, text) add(narrow::name.bare(), "", cxxopts::value(values.name));
#include "qel/config/flags.def"
    options.parse(argc, argv);
}

} // namespace qel::config::bench
