// The verb `help`: all verbs, or one of them.
#include "manuals/help.hpp"

#include "verbs/call.hpp"

#include "qel/i18n/convert.hpp"

#include <ostream>

namespace orvane {

ExitCode verb::help(const Call& call) {
    if (call.words.empty()) {
        call.out << help_text();
        return ExitCode::done;
    }
    const std::string name = qel::i18n::ustring_to_term(call.words.front());
    const Verb* const verb = verb_of(name);
    if (verb == nullptr) throw Misused("there is no verb '" + name + "'");
    call.out << help_text(*verb);
    return ExitCode::done;
}

} // namespace orvane
