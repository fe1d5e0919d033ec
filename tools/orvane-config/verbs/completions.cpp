// The verb `completions`: scripts that teach a shell the flags.
#include "completing/choices.hpp"
#include "verbs/call.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <cctype>
#include <ostream>

namespace orvane {

using completing::Shell, completing::shells;

static_assert(std::ranges::equal(split(verb_of("completions")->arguments, "|"), shells, {}, {}, &Shell::name),
              "the verb's arguments are not the shells");

ExitCode verb::completions(const Call& call) {
    const std::string own_name = "orvane-config";
    const std::string name = call.value(own("for"), own_name);
    const bool plain = std::all_of(name.begin(), name.end(), [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '_' || c == '.';
    });
    if (!plain || name.empty())
        throw Misused(spelled(own("for")) + " takes a program's name, of letters, digits, '-', '_' and '.'");
    const std::string wanted = qel::i18n::ustring_to_utf8(call.words.front());
    call.out << std::ranges::find(shells, wanted, &Shell::name)->script(name, name == own_name);
    return ExitCode::done;
}

} // namespace orvane
