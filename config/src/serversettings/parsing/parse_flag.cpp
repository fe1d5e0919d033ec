// Values of each kind, taken from the token after the flag.
#include "parsing/parse_flag.hpp"

#include "parsing/duration_values.hpp"
#include "parsing/fast_paths.hpp"

#include "qel/i18n/convert.hpp"

#include <boost/throw_exception.hpp>

#include <algorithm>
#include <stdexcept>

namespace qel::config {
namespace {

/// lexical_cast defines the values of numbers, sizes, durations and severities, even the surprising ones: "-1" is the
/// largest unsigned number, and "5" is five hours.
template <class T>
Stored<T> convert(const std::u16string& token);

template <>
unsigned int convert<unsigned int>(const std::u16string& token) {
    return number_from<unsigned int>(token);
}

template <>
std::uint64_t convert<storage_size>(const std::u16string& token) {
    if (const auto bytes = plain_number(token)) return *bytes;
    return boost::lexical_cast<storage_size>(i18n::ustring_to_utf8(token)).bytes();
}

template <>
time_duration convert<time_duration>(const std::u16string& token) {
    const auto duration = read_duration(token);
    if (!duration) throw boost::bad_lexical_cast();
    return *duration;
}

template <>
severity_level convert<severity_level>(const std::u16string& token) {
    const auto& names = logging::severity_names;
    const auto found = std::find_if(names.begin(), names.end(), [&](std::string_view name) {
        return std::equal(name.begin(), name.end(), token.begin(), token.end());
    });
    if (found == names.end()) throw boost::bad_lexical_cast();
    return static_cast<severity_level>(found - names.begin());
}

template <>
Path convert<Path>(const std::u16string& token) {
    return Path(token);
}

template <>
std::u16string convert<std::u16string>(const std::u16string& token) {
    return token;
}

template <>
std::u16string_view convert<std::u16string_view>(const std::u16string& token) {
    return token;
}

template <>
std::string convert<std::string>(const std::u16string& token) {
    return i18n::ustring_to_utf8(token);
}

/// `value` is null if there is no token after the flag.
[[noreturn]] void invalid_option(const std::u16string& flag, const std::u16string* value,
                                 const char* reason) {
    std::string text = "invalid option '" + i18n::ustring_to_term(flag);
    if (value != nullptr) text += " " + i18n::ustring_to_term(*value);
    text += "', ";
    text += reason;
    BOOST_THROW_EXCEPTION(std::runtime_error(text));
}

} // namespace

template <class T>
Stored<T> parse_flag(Walk& walk) {
    const std::u16string& flag = *walk.cursor++;
    if (walk.cursor == walk.end) invalid_option(flag, nullptr, "missing argument(s)");
    const std::u16string& token = *walk.cursor++;
    try {
        return convert<T>(token);
    } catch (const std::exception& failure) {
        invalid_option(flag, &token, failure.what());
    }
}

template <>
bool parse_flag<bool>(Walk& walk) {
    ++walk.cursor;
    return true;
}

template Path parse_flag<Path>(Walk&);
template std::u16string parse_flag<std::u16string>(Walk&);
template std::u16string_view parse_flag<std::u16string_view>(Walk&);
template std::string parse_flag<std::string>(Walk&);
template unsigned int parse_flag<unsigned int>(Walk&);
template std::uint64_t parse_flag<storage_size>(Walk&);
template time_duration parse_flag<time_duration>(Walk&);
template severity_level parse_flag<severity_level>(Walk&);

} // namespace qel::config
