// The format json: an array of strings.
#include "formats/format_table.hpp"
#include "text/lists.hpp"

#include <boost/json.hpp>

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

} // namespace

bool is_json(std::string_view text) {
    const std::string_view line = first_line_of(text);
    return line.starts_with('[');
}

ReadTokens read_json(const LocatedText& text) {
    const json::value value = parsed(text);
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
