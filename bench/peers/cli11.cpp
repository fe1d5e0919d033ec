// CLI11, with one value after each flag.
#include "peer.hpp"

#include <CLI/CLI.hpp>

namespace qel::config::bench {
namespace {

void add(CLI::App& app, const char* flag, bool& value) {
    app.add_flag(flag, value);
}

template <class T>
void add(CLI::App& app, const char* flag, T& value) {
    app.add_option(flag, value)->allow_extra_args(false);
}

} // namespace

void parse_with_cli11(int argc, char** argv, Values& values) {
    CLI::App app;
#define ZEP_FLAG(name, text) add(app, narrow::name.with_dashes, values.name);
#include "qel/config/flags.def"
    app.parse(argc, argv);
}

} // namespace qel::config::bench
