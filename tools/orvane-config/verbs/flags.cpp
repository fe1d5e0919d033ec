// The verb `flags`: the reference of all flags, or of those that somebody asks about.
#include "explaining/lookup.hpp"
#include "explaining/meant_flags.hpp"
#include "printing/json.hpp"
#include "printing/reference_text.hpp"
#include "text/spelling.hpp"
#include "verbs/call.hpp"

#include "qel/i18n/convert.hpp"

#include <ostream>

namespace orvane {
namespace {

/// Throws Misused when a word leads to nothing.
Lookup asked_for(const Call& call) {
    Lookup found = look_up(std::vector<std::u16string>(call.words.begin(), call.words.end()));
    if (found.unknown.empty()) return found;
    std::string text = "no flag matches '" + found.unknown[0] + "'";
    if (const auto similar = flags_like(normalized(qel::i18n::utf8_to_ustring(found.unknown[0])));
        !similar.empty())
        text += "; did you mean " + std::string(similar[0]->flag) + "?";
    throw Misused(text);
}

} // namespace

ExitCode verb::flags(const Call& call) {
    const std::string wanted = call.value(own("format"), "text");
    const bool all = call.words.empty();
    const Lookup found = all ? Lookup{all_flags(), {}, {}} : asked_for(call);
    for (const std::string& advice : found.advice)
        call.err << "orvane-config: " << advice << '\n';
    if (wanted == "json") {
        call.out << reference_json(found.flags) << '\n';
        return ExitCode::done;
    }
    const ReferenceFormat& format = reference_format(wanted);
    if (all) call.out << format.before;
    write(found.flags, format, all, call.out);
    return ExitCode::done;
}

} // namespace orvane
