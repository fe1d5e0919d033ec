// The ids of faults and warnings that were given.
#include "verbs/given_ids.hpp"

#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

namespace orvane {

const Explanation& kind_called(const std::string& id, std::string_view about) {
    std::vector<std::string> ids;
    for (const Explanation& kind : all_kinds()) {
        if (!about.empty() && kind.about != about) continue;
        if (kind.id == id) return kind;
        ids.push_back(kind.id);
    }
    const auto similar = most_like(qel::i18n::utf8_to_ustring(id), ids);
    throw Misused(
        "there is no " + std::string(about.empty() ? "id" : about) + " '" + id + "'" +
        (similar.empty() ? "; 'orvane-config explain' lists them" : "; did you mean '" + similar[0] + "'?"));
}

WarningIds ignored_warnings(const Call& call, const WarningIds& others) {
    const std::string list = call.value(own("ignore"));
    WarningIds ignored;
    for (const std::string_view id : split(list, ","))
        ignored.emplace(others.contains(id) ? id : kind_called(std::string(id), "warning").id);
    return ignored;
}

} // namespace orvane
