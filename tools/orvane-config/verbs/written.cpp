// A line in the format of --to.
#include "verbs/written.hpp"

#include "formats/format_table.hpp"
#include "system/exact_bytes.hpp"

#include "qel/i18n/convert.hpp"

#include <cstdio>
#include <vector>

namespace orvane {

std::string written(const Call& call, const CommandLine& line) {
    std::vector<Tokens> groups;
    for (const Occurrence& occurrence : line)
        groups.push_back(tokens_of({occurrence}));
    const std::string to = call.value(own("to"));
    keep_bytes(stdout);
    return write(format_named(to.empty() ? "flags" : to),
                 qel::i18n::utf8_to_ustring(call.value(own("program"))), groups);
}

} // namespace orvane
