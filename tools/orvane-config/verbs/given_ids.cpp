// The ids of faults and warnings that were given.
#include "verbs/given_ids.hpp"

#include "explaining/hazards.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

namespace orvane {

namespace {

std::string_view warning_called(const std::string& id) {
    std::vector<std::string> ids;
    for (const Explanation& kind : all_kinds()) {
        if (kind.about != "warning" && kind.about != "hazard") continue;
        if (kind.id == id) return kind.id;
        ids.push_back(kind.id);
    }
    const auto similar = most_like(qel::i18n::utf8_to_ustring(id), ids);
    throw Misused("there is no warning '" + id + "'" +
                  (similar.empty() ? "; 'orvane-config explain ids' lists them"
                                   : "; did you mean '" + similar[0] + "'?"));
}

} // namespace

WarningIds ignored_warnings(const Call& call, const WarningIds& others) {
    const std::string list = call.value(own("ignore"));
    WarningIds ignored;
    for (const std::string_view id : split(list, ","))
        ignored.emplace(others.contains(id) ? id : warning_called(std::string(id)));
    return ignored;
}

} // namespace orvane
