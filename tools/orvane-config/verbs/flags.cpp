// The verb `flags`: the reference of all flags, or of those that somebody asks about.
#include "explaining/lookup.hpp"
#include "explaining/meant_flags.hpp"
#include "explaining/spelling.hpp"
#include "printing/reference_json.hpp"
#include "printing/reference_text.hpp"
#include "verbs/call.hpp"
#include "verbs/help.hpp"

#include "qel/i18n/convert.hpp"

#include <ostream>

namespace orvane {
namespace {

/// Throws Misused when a word leads to nothing.
Lookup asked_for(const Call& call) {
    Lookup found = look_up({call.words.begin(), call.words.end()});
    if (found.unknown.empty()) return found;
    std::string text = "no flag matches '" + found.unknown[0] + "'";
    if (const auto similar = flags_like(normalized(qel::i18n::utf8_to_ustring(found.unknown[0])));
        !similar.empty())
        text += "; did you mean " + std::string(similar[0]->flag) + "?";
    throw Misused(text);
}

std::vector<const Reference*> all_flags() {
    std::vector<const Reference*> flags;
    for (const Reference& one : references())
        flags.push_back(&one);
    return flags;
}

void write(const std::vector<const Reference*>& flags, const ReferenceFormat& format, bool with_forms,
           std::ostream& out) {
    std::string_view subject;
    for (const Reference* const one : flags) {
        format.write(*one, with_forms && one->subject != subject, out);
        subject = one->subject;
    }
    if (with_forms) format.write_forms(out);
}

} // namespace

ExitCode flags(const Call& call) {
    const std::string wanted = call.value(own("format"), "text");
    const bool all = call.words.empty();
    const Lookup found = all ? Lookup{all_flags(), {}, {}} : asked_for(call);
    for (const std::string& advice : found.advice)
        call.err << "orvane-config: " << advice << '\n';
    if (wanted == "json") {
        call.out << reference_json(found.flags) << '\n';
        return ExitCode::done;
    }
    if (wanted == "man") call.out << manual_head();
    const ReferenceFormat& format = reference_format(wanted);
    if (all) call.out << format.before;
    write(found.flags, format, all, call.out);
    return ExitCode::done;
}

} // namespace orvane
