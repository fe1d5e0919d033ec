// The verb `explain`: what the kinds of faults, rules, warnings and findings mean.
#include "printing/explanations.hpp"
#include "verbs/given_ids.hpp"

#include "qel/i18n/convert.hpp"

namespace orvane {

ExitCode verb::explain(const Call& call) {
    const bool all = call.words.empty();
    write(all ? all_kinds() : std::vector{kind_called(qel::i18n::ustring_to_utf8(call.words.front()))},
          call.value(own("format"), "text"), all, call.out);
    return ExitCode::done;
}

} // namespace orvane
