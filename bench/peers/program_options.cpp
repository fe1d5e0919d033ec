// Boost.ProgramOptions, with its own styles.
#include "peer.hpp"

#include <boost/program_options.hpp>

namespace qel::config::bench {
namespace {

namespace po = boost::program_options;

po::value_semantic* stored_in(bool& value) {
    return po::bool_switch(&value);
}

template <class T>
po::value_semantic* stored_in(T& value) {
    return po::value(&value);
}

} // namespace

void parse_with_program_options(int argc, char** argv, Values& values) {
    po::options_description options;
    auto add = options.add_options();
#define ZEP_FLAG(name, text) add(narrow::name.bare(), stored_in(values.name));
#include "qel/config/flags.def"
    po::variables_map found;
    po::store(po::parse_command_line(argc, argv, options), found);
    po::notify(found);
}

} // namespace qel::config::bench
