// What the answers in JSON have in common.
#pragma once

#include "explaining/hazards.hpp"
#include "explaining/verdict.hpp"

#include <boost/json.hpp>

#include <string>
#include <vector>

namespace orvane {

/// The members that every answer about a command line begins with.
boost::json::object head_of(const Verdict& verdict);

boost::json::array warnings_json(const std::vector<Warning>& warnings, const SourcePlaces& places);

/// As text, whatever the bytes are.
boost::json::value json_text(const std::string& text);
boost::json::value json_text(const std::u16string& text);

/// The answer as it is printed: no character is hidden, or turns those after it round.
std::string answer_of(const boost::json::object& object);

/// In ascending order.
boost::json::array numbers_of_tokens(const Occurrence& occurrence);

/// Adds where those of the tokens are that were read from a file.
void add_places(boost::json::object& object, const SourcePlaces& places, const boost::json::array& tokens);

/// What an attacker would gain.
boost::json::object security_json(const std::vector<HazardLook>& looks, const SourcePlaces& places);

boost::json::value json_of(const qel::config::ServerSettings& settings);

} // namespace orvane
