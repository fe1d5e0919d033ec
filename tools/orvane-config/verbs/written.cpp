// A line in the format of --to.
#include "verbs/written.hpp"

#include "formats/format_table.hpp"
#include "system/exact_bytes.hpp"

#include "qel/i18n/convert.hpp"

#include <cstdio>
#include <vector>

namespace orvane {

std::string written(const Call& call, const CommandLine& line, const std::u16string& program) {
    std::vector<Tokens> groups;
    for (const Occurrence& occurrence : line)
        groups.push_back(tokens_of({occurrence}));
    const std::string to = call.value(own("to"));
    keep_bytes(stdout);
    const LineFormat& format = format_named(to.empty() ? "flags" : to);
    const bool is_kept = format.has_program && program.find_first_of(u"$%") == program.npos &&
                         !call.has(own("program")) && !call.has(own("redact"));
    return write(format, is_kept ? program : qel::i18n::utf8_to_ustring(call.value(own("program"))), groups);
}

} // namespace orvane
