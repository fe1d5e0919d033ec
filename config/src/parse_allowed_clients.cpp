// The grammar of the client access list.
#include "parse_allowed_clients.hpp"

#include "qel/config/option.hpp"
#include "qel/i18n/convert.hpp"

#include <boost/algorithm/string/trim.hpp>
#include <boost/throw_exception.hpp>

#include <set>
#include <stdexcept>
#include <vector>

namespace qel::config {
namespace {

std::string invalid_syntax(const std::string& fault) {
    return "invalid syntax for " + i18n::ustring_to_utf8(option::https_allowed_client()) + ": " + fault;
}

std::string in_configuration(const std::string& config) {
    return " (in configuration \"" + config + "\")";
}

std::vector<std::string> fields_of(const std::string& list) {
    std::vector<std::string> fields;
    std::size_t begin = 0;
    for (std::size_t comma; (comma = list.find(',', begin)) != list.npos; begin = comma + 1)
        fields.push_back(list.substr(begin, comma - begin));
    fields.push_back(list.substr(begin));
    return fields;
}

std::set<std::u16string> parse_archives(const std::string& list, const std::string& config) {
    std::set<std::u16string> archives;
    for (std::string& archive : fields_of(list)) {
        boost::trim(archive);
        if (archive.empty()) {
            BOOST_THROW_EXCEPTION(
                std::runtime_error(invalid_syntax("empty zarc name" + in_configuration(config))));
        }
        archives.insert(i18n::utf8_to_ustring(archive));
    }
    return archives;
}

} // namespace

void parse_allowed_clients(std::string config, AccessMap& clients) {
    boost::trim(config);
    if (config.empty()) BOOST_THROW_EXCEPTION(std::runtime_error(invalid_syntax("no clients specified")));

    const auto colon = config.find(':');
    const std::string client_part = config.substr(0, colon);
    const std::string archive_part = colon == std::string::npos ? std::string() : config.substr(colon + 1);
    if (archive_part.find(':') != std::string::npos) {
        BOOST_THROW_EXCEPTION(
            std::runtime_error(invalid_syntax("multiple occurrances of ':'" + in_configuration(config))));
    }
    if (client_part.empty()) {
        BOOST_THROW_EXCEPTION(
            std::runtime_error(invalid_syntax("there must be a non-empty client list before ':'")));
    }

    // The archives are the same for all clients: they are taken apart once, with the first, and given to each once.
    std::set<std::u16string> archives;
    std::set<const void*> served;
    for (std::string& client : fields_of(client_part)) {
        boost::trim(client);
        if (client.empty()) {
            BOOST_THROW_EXCEPTION(
                std::runtime_error(invalid_syntax("empty client name" + in_configuration(config))));
        }
        // A client without archives is not restricted; once it has some, no mark of that is kept.
        auto& allowed = clients[client];
        if (archive_part.empty()) continue;
        if (served.empty()) archives = parse_archives(archive_part, config);
        if (served.insert(&allowed).second) allowed.insert(archives.begin(), archives.end());
    }
}

} // namespace qel::config
