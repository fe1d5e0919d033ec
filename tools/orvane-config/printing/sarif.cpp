// Remarks in SARIF 2.1.0.
#include "explaining/kinds.hpp"
#include "printing/json_parts.hpp"
#include "printing/remarks.hpp"
#include "text/escape.hpp"
#include "text/lists.hpp"
#include "text/path_anchor.hpp"

#include "qel/config/build_info.hpp"
#include "qel/i18n/convert.hpp"

#include <boost/json.hpp>

#include <cstddef>
#include <set>
#include <string_view>
#include <utility>

namespace orvane {
namespace {

namespace json = boost::json;

/// A path as a relative reference, or as the URI of a file where it is absolute: RFC 3986 and 8089.
std::string uri_of(const std::string& path) {
    const std::u16string wide = qel::i18n::utf8_to_ustring(path);
    const std::size_t volume = volume_of(wide).size();
    std::string uri = anchor_of(wide) != PathAnchor::full ? ""
                      : volume == 0                       ? "file://"
                      : volume == 2                       ? "file:///"
                                                          : "file:";
    for (const char c : path) {
        constexpr std::string_view plain =
            "/-._~0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
        const auto byte = static_cast<unsigned char>(c);
        if (contains(plain, c))
            uri += c;
        else if (c == '\\' && backslash_separates())
            uri += '/';
        else
            uri.append(1, '%').append(1, plain[5 + byte / 16]).append(1, plain[5 + byte % 16]);
    }
    return uri;
}

json::object message(const std::string& text) {
    return {{"text", json_text(text)}};
}

json::array locations(const Remark& remark) {
    const auto& [file, spot] = remark.place;
    if (file.empty() || file == standard_input)
        return {{{"logicalLocations", {{{"fullyQualifiedName", json_text(escape(remark.where()))}}}}}};
    json::object place{{"artifactLocation", {{"uri", uri_of(file)}}}};
    if (spot.line != 0) place["region"] = {{"startLine", spot.line}, {"startColumn", spot.column}};
    return {{{"physicalLocation", std::move(place)}}};
}

/// What `explain` says about the ids.
json::array rules(const std::set<std::string_view>& ids) {
    json::array array;
    for (const Explanation& kind : all_kinds()) {
        if (!ids.contains(kind.id)) continue;
        array.push_back({{"id", kind.id},
                         {"shortDescription", message(kind.summary)},
                         {"fullDescription", message(kind.cause.empty() ? kind.summary : kind.cause)}});
    }
    return array;
}

/// What the tool could not look at.
json::object invocation(const std::vector<Case>& cases) {
    json::array notes;
    bool failed = false;
    for (const Case& one : cases) {
        if (!one.looked_at)
            notes.push_back({{"level", "note"}, {"message", message("not looked at: " + one.name)}});
        for (const Remark& remark : one.remarks) {
            if (!remark.id.empty()) continue;
            failed = true;
            notes.push_back({{"level", remark.level},
                             {"message", message(remark.text)},
                             {"locations", locations(remark)}});
        }
    }
    return {{"executionSuccessful", !failed}, {"toolExecutionNotifications", std::move(notes)}};
}

} // namespace

std::string to_sarif(const std::vector<Case>& cases) {
    json::array results;
    std::set<std::string_view> ids;
    for (const Case& one : cases)
        for (const Remark& remark : one.remarks) {
            if (remark.id.empty()) continue;
            ids.insert(remark.id);
            results.push_back({{"ruleId", remark.id},
                               {"level", remark.level},
                               {"message", message(remark.text)},
                               {"locations", locations(remark)}});
        }
    json::object driver{{"name", "orvane-config"}, {"version", zep_config_version}, {"rules", rules(ids)}};
    json::object run{{"tool", {{"driver", std::move(driver)}}},
                     {"columnKind", "unicodeCodePoints"},
                     {"invocations", json::array{invocation(cases)}},
                     {"results", std::move(results)}};
    return answer_of({{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                      {"version", "2.1.0"},
                      {"runs", json::array{std::move(run)}}}) +
           "\n";
}

} // namespace orvane
