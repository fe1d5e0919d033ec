// The grammar of the client access list.
#include "parse_allowed_clients.hpp"

#include "qel/config/option.hpp"
#include "qel/i18n/convert.hpp"

#include <boost/algorithm/string/trim.hpp>
#include <boost/range/iterator_range_core.hpp>
#include <boost/throw_exception.hpp>

#include <set>
#include <stdexcept>

namespace qel::config {
namespace {

std::string invalid_syntax(const std::string& fault) {
    return "invalid syntax for " + i18n::ustring_to_utf8(option::https_allowed_client()) + ": " + fault;
}

std::string in_configuration(std::string_view config) {
    return " (in configuration \"" + std::string(config) + "\")";
}

std::string_view trimmed(std::string_view text) {
    const auto range = boost::trim_copy(boost::make_iterator_range(text));
    return {range.begin(), range.end()};
}

/// The next field of the list, trimmed. A list ends with its last field: then `list` has no data any more.
std::string_view take_field(std::string_view& list) {
    const std::size_t comma = list.find(',');
    const std::string_view field = trimmed(list.substr(0, comma));
    list = comma == list.npos ? std::string_view() : list.substr(comma + 1);
    return field;
}

void add_archives(std::string_view list, std::string_view config, std::set<std::u16string>& archives) {
    do {
        const std::string_view archive = take_field(list);
        if (archive.empty()) {
            BOOST_THROW_EXCEPTION(
                std::runtime_error(invalid_syntax("empty zarc name" + in_configuration(config))));
        }
        archives.insert(i18n::utf8_to_ustring(archive));
    } while (list.data() != nullptr);
}

} // namespace

void parse_allowed_clients(std::string_view config, AccessMap& clients) {
    config = trimmed(config);
    if (config.empty()) BOOST_THROW_EXCEPTION(std::runtime_error(invalid_syntax("no clients specified")));

    const auto colon = config.find(':');
    std::string_view client_part = config.substr(0, colon);
    const std::string_view archive_part =
        colon == config.npos ? std::string_view() : config.substr(colon + 1);
    if (archive_part.find(':') != archive_part.npos) {
        BOOST_THROW_EXCEPTION(
            std::runtime_error(invalid_syntax("multiple occurrances of ':'" + in_configuration(config))));
    }
    if (client_part.empty()) {
        BOOST_THROW_EXCEPTION(
            std::runtime_error(invalid_syntax("there must be a non-empty client list before ':'")));
    }

    std::set<const void*> served; // A client may be named more than once.
    do {
        const std::string_view client = take_field(client_part);
        if (client.empty()) {
            BOOST_THROW_EXCEPTION(
                std::runtime_error(invalid_syntax("empty client name" + in_configuration(config))));
        }
        // A client without archives is not restricted; once it has some, no mark of that is kept.
        auto& allowed = clients.try_emplace(std::string(client)).first->second;
        if (!archive_part.empty() && served.insert(&allowed).second)
            add_archives(archive_part, config, allowed);
    } while (client_part.data() != nullptr);
}

} // namespace qel::config
