// What an attacker would gain, for people.
#include "printing/security_text.hpp"

#include "printing/wrapping.hpp"
#include "probing/occurrence_text.hpp"
#include "reference/reference.hpp"
#include "text/escape.hpp"
#include "text/lists.hpp"

#include <utility>

namespace orvane {
namespace {

using State = HazardLook::State;

std::vector<const HazardLook*> found_at(const std::vector<HazardLook>& looks, Level level) {
    std::vector<const HazardLook*> found;
    for (const HazardLook& look : looks)
        if (look.state == State::found && look.hazard->level == level) found.push_back(&look);
    return found;
}

std::string text_of(const HazardLook& look, const SourcePlaces& places) {
    std::string text;
    for (const Warning& one : look.warnings) {
        text.append("  ").append(at_token(one.token, places)).append(escape(one.text));
        text.append(" [").append(one.id).append("]\n");
    }
    return text + wrapped(with_flags(look.hazard->gain), 4, 0) + "\n" +
           wrapped(with_flags(look.hazard->instead), 4, 0) + "\n";
}

/// What there is not, each once, rather than all that could be wrong with it.
std::string missing_in(const std::vector<HazardLook>& looks) {
    std::vector<std::string_view> subjects;
    for (const HazardLook& look : looks)
        if (!look.missing.empty() && !contains(subjects, look.missing)) subjects.push_back(look.missing);
    return subjects.empty() ? "" : wrapped("not configured: " + joined(subjects, ", "), 0, 2) + "\n";
}

std::string ids_in(const std::vector<HazardLook>& looks, State state, const char* heading) {
    std::vector<std::string_view> ids;
    for (const HazardLook& look : looks)
        if (look.state == state) ids.push_back(look.hazard->kind.id);
    return ids.empty() ? "" : wrapped(heading + joined(ids, ", "), 0, 2) + "\n";
}

} // namespace

bool has_weak(const std::vector<HazardLook>& looks) {
    return !found_at(looks, Level::weak).empty();
}

std::string worst_of(const std::vector<HazardLook>& looks) {
    for (const Level level : {Level::open, Level::weak})
        if (!found_at(looks, level).empty()) return std::string(to_text(level));
    return "nothing found";
}

std::string to_text(const std::vector<HazardLook>& looks, const SourcePlaces& places) {
    std::string text =
        "security of these settings: " + worst_of(looks) + " (list " + std::string(hazards_version) + ")\n";
    for (const Level level : {Level::open, Level::weak}) {
        const auto found = found_at(looks, level);
        if (!found.empty())
            text += level == Level::open
                        ? "open: somebody gets in, or reads what is private, without an attack\n"
                        : "weak: it takes a known attack, or another mistake\n";
        for (const HazardLook* look : found)
            text += text_of(*look, places);
    }
    return text + ids_in(looks, State::safe, "looked at and safe: ") + missing_in(looks) +
           ids_in(looks, State::not_looked_at, "not looked at in this build: ");
}

} // namespace orvane
