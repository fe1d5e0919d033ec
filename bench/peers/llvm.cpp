// LLVM's flags are variables of the program, which keep their values until they are reset.
#include "peer.hpp"

#include <llvm/Support/CommandLine.h>

#include <stdexcept>

namespace qel::config::bench {
namespace {

template <Kind kind>
using Option =
    std::conditional_t<kind == Kind::repeatable, llvm::cl::list<std::string>, llvm::cl::opt<Stored<kind>>>;

namespace flags {
#define ZEP_FLAG(name, text) Option<kind_of(#name)> name(llvm::StringRef(narrow::name.bare()));
#include "qel/config/flags.def"
} // namespace flags

} // namespace

void parse_with_llvm(int argc, char** argv, Values&) {
    llvm::cl::ResetAllOptionOccurrences();
    if (!llvm::cl::ParseCommandLineOptions(argc, argv)) throw std::invalid_argument("refused by LLVM");
}

void llvm_values(Values& values) {
    const auto fetch = [](const auto& flag, auto& value) {
        if constexpr (std::is_same_v<decltype(value), std::vector<std::string>&>)
            value.assign(flag.begin(), flag.end());
        else
            value = flag;
    };
#define ZEP_FLAG(name, text) fetch(flags::name, values.name);
#include "qel/config/flags.def"
}

} // namespace qel::config::bench
