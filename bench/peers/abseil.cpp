// abseil's flags are variables of the program. Their names contain no '-', and a repeated flag keeps its last value.
#include "peer.hpp"

#include <absl/flags/flag.h>
#include <absl/flags/parse.h>

#include <unordered_map>

namespace {

using qel::config::bench::Kind;

/// The last of the values.
template <Kind kind>
using Single = std::conditional_t<kind == Kind::repeatable, std::string, qel::config::bench::Stored<kind>>;

} // namespace

#define ZEP_FLAG(name, text) ABSL_FLAG(Single<qel::config::bench::kind_of(#name)>, name, {}, "");
#include "qel/config/flags.def"

namespace qel::config::bench {

void parse_with_abseil(int argc, char** argv, Values&) {
    absl::ParseCommandLine(argc, argv);
}

void abseil_values(Values& values) {
    const auto fetch = [](const auto& flag, auto& value) {
        if constexpr (std::is_same_v<decltype(value), std::vector<std::string>&>) {
            if (auto last = absl::GetFlag(flag); !last.empty()) value.push_back(std::move(last));
        } else {
            value = absl::GetFlag(flag);
        }
    };
#define ZEP_FLAG(name, text) fetch(FLAGS_##name, values.name);
#include "qel/config/flags.def"
}

std::string abseil_token(const std::string& token) {
    static const std::unordered_map<std::string, std::string> names = {
#define ZEP_FLAG(name, text) {narrow::name.with_dashes, "--" #name},
#include "qel/config/flags.def"
    };
    const auto found = names.find(token);
    return found == names.end() ? token : found->second;
}

} // namespace qel::config::bench
