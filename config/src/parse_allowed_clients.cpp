// The grammar of the client access list.
#include "parse_allowed_clients.hpp"

#include "qel/config/option.hpp"
#include "qel/i18n/convert.hpp"

#include <boost/throw_exception.hpp>

#include <algorithm>
#include <locale>
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

using Letters = std::ctype<char>;

std::string_view trimmed(std::string_view text, const Letters& letters) {
    const auto is_space = [&letters](char c) { return letters.is(Letters::space, c); };
    const auto end = std::find_if_not(text.rbegin(), text.rend(), is_space).base();
    return {std::find_if_not(text.begin(), end, is_space), end};
}

/// The next field of the list, trimmed. After the last field, `list` has a null data().
std::string_view take_field(std::string_view& list, const Letters& letters) {
    const std::size_t comma = list.find(',');
    const std::string_view field = trimmed(list.substr(0, comma), letters);
    list = comma == list.npos ? std::string_view() : list.substr(comma + 1);
    return field;
}

void add_archives(std::string_view list, std::string_view config, const Letters& letters,
                  std::set<std::u16string>& archives) {
    do {
        const std::string_view archive = take_field(list, letters);
        if (archive.empty()) {
            BOOST_THROW_EXCEPTION(
                std::runtime_error(invalid_syntax("empty zarc name" + in_configuration(config))));
        }
        archives.insert(i18n::utf8_to_ustring(archive));
    } while (list.data() != nullptr);
}

} // namespace

void parse_allowed_clients(std::string_view config, AccessMap& clients, AccessMap::iterator& latest) {
    // The global locale decides what white space is.
    const std::locale locale;
    const auto& letters = std::use_facet<Letters>(locale);
    config = trimmed(config, letters);
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
        const std::string_view client = take_field(client_part, letters);
        if (client.empty()) {
            BOOST_THROW_EXCEPTION(
                std::runtime_error(invalid_syntax("empty client name" + in_configuration(config))));
        }
        // A client without archives is unrestricted; nothing records that once it gets some. Long lists mostly are
        // sorted or numbered: then the next client comes after the latest, and nothing has to be searched.
        latest = clients.try_emplace(latest, std::string(client));
        auto& allowed = latest->second;
        if (!archive_part.empty() && served.insert(&allowed).second)
            add_archives(archive_part, config, letters, allowed);
    } while (client_part.data() != nullptr);
}

} // namespace qel::config
