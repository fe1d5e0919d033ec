// What the kinds of faults, rules, warnings and findings mean, for programs.
#include "explaining/kinds.hpp"
#include "printing/json.hpp"

#include <boost/json.hpp>

namespace orvane {

std::string explain_json(const std::vector<Explanation>& kinds) {
    boost::json::array all;
    for (const Explanation& kind : kinds) {
        boost::json::object object{{"id", kind.id}, {"about", kind.about}, {"summary", kind.summary}};
        if (!kind.cause.empty())
            object.insert({{"cause", kind.cause}, {"example", kind.example}, {"fix", kind.fix}});
        all.push_back(std::move(object));
    }
    return boost::json::serialize(boost::json::object{{"format", json_format}, {"kinds", std::move(all)}});
}

} // namespace orvane
