// The variables that are given with --env.
#include "verbs/given_variables.hpp"

#include "formats/content.hpp"
#include "verbs/input.hpp"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace orvane {

std::vector<Variable> variables_in(const Call& call) {
    std::vector<Variable> all;
    for (const auto& [option, value] : call.options) {
        if (option != &own("env")) continue;
        const std::size_t equals = std::min(value.find('='), value.size());
        if (equals != value.size() && is_variable_name(value.substr(0, equals))) {
            all.push_back({value.substr(0, equals), located(value.substr(equals + 1))});
            continue;
        }
        const std::string name = shown_name(call, value);
        try {
            std::ranges::move(variables_of(located(content_of(value, name)), true), std::back_inserter(all));
        } catch (const NotUnderstood& fault) {
            throw std::runtime_error(SourcePlace{name, fault.spot}.text() + ": " + fault.what());
        }
    }
    return all;
}

} // namespace orvane
