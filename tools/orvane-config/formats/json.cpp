// The format json: an array of strings; read also an object of settings.
#include "formats/format_table.hpp"
#include "text/lists.hpp"

#include <boost/json.hpp>

#include <algorithm>

namespace orvane {
namespace {

namespace json = boost::json;

[[noreturn]] void refuse(const LocatedText& text, std::size_t at, const std::string& why) {
    Walk walk(text);
    walk.move_to(at);
    walk.refuse(why);
}

json::value parsed(const LocatedText& text) {
    json::parser parser;
    boost::system::error_code error;
    std::size_t read = parser.write_some(text.bytes, error);
    if (error) refuse(text, read, "this is not JSON: " + error.message());
    read = text.bytes.find_first_not_of(" \t\r\n", read);
    if (read != text.bytes.npos) refuse(text, read, "there is text after the array");
    return parser.release();
}

/// Not the value itself, which may be long, and private.
std::string kind_of(const json::value& value) {
    if (value.is_number()) return "a number";
    return value.is_bool()    ? "a boolean"
           : value.is_null()  ? "null"
           : value.is_array() ? "an array"
                              : "an object";
}

/// Where the strings begin in a text that is an array of strings.
std::vector<Spot> starts_of_strings(const LocatedText& text) {
    std::vector<Spot> starts;
    bool inside = false;
    for (std::size_t i = 0; i != text.bytes.size(); ++i) {
        if (inside && text.bytes[i] == '\\') {
            ++i;
        } else if (text.bytes[i] == '"') {
            inside = !inside;
            if (inside) starts.push_back(text.spots[i]);
        }
    }
    return starts;
}

/// Not what yaml is better at: a manifest.
bool is_object_of_settings(std::string_view text) {
    constexpr std::string_view of_manifests[] = {"\"apiVersion\"", "\"services\"", "\"containers\"",
                                                 "\"args\"", "\"command\""};
    const std::string_view object = text.substr(std::min(text.find('{'), text.size()));
    const auto name = object.find_first_not_of(" \t\r\n", 1);
    return name != text.npos && object[name] == '"' &&
           std::ranges::none_of(of_manifests,
                                [&](std::string_view key) { return text.find(key) != text.npos; });
}

std::string value_of(const LocatedText& text, const json::value& value) {
    if (value.is_string()) return std::string(value.get_string());
    if (value.is_int64()) return std::to_string(value.get_int64());
    refuse(text, 0,
           "the value of a setting is " + kind_of(value) +
               "; write a string here, and a switch as a flag: [\"--name\", \"value\", \"--switch\"]");
}

ReadTokens settings_in(const LocatedText& text, const json::object& object) {
    if (object.contains("accepted"))
        refuse(text, 0, "this is an answer of orvane-config; give the flags or the file that it is about");
    ReadTokens tokens;
    const std::vector<Spot> starts = starts_of_strings(text);
    std::size_t strings = 0;
    for (const auto& [key, value] : object) {
        const std::string name(key);
        tokens.push_back({(name.starts_with("--") ? "" : "--") + name, starts[strings++]});
        tokens.push_back({value_of(text, value), starts[value.is_string() ? strings++ : strings - 1]});
    }
    if (strings != starts.size()) refuse(text, 0, "a name is in this object twice");
    return tokens;
}

} // namespace

bool is_json(std::string_view text) {
    const std::string_view line = first_line_of(text);
    return (line.starts_with('[') && !is_section(line)) ||
           (line.starts_with('{') && is_object_of_settings(text));
}

ReadTokens read_json(const LocatedText& text) {
    const json::value value = parsed(text);
    if (value.is_object()) return settings_in(text, value.get_object());
    const json::array* const array = value.if_array();
    if (array == nullptr) refuse(text, 0, "this is not an array of strings");
    for (std::size_t i = 0; i != array->size(); ++i)
        if (!(*array)[i].is_string())
            refuse(text, 0,
                   "element " + std::to_string(i + 1) + " of the array is not a string, but " +
                       kind_of((*array)[i]));
    ReadTokens tokens;
    const std::vector<Spot> starts = starts_of_strings(text);
    for (std::size_t i = 0; i != array->size(); ++i)
        tokens.push_back({std::string((*array)[i].get_string()), starts[i]});
    return tokens;
}

std::string as_json(const TokenGroups& groups) {
    std::vector<std::string> strings;
    for (const TokenGroup& group : groups)
        for (const std::string& token : group)
            strings.push_back(json::serialize(json::value(token)));
    return "[" + joined(strings) + "]\n";
}

} // namespace orvane
