// Reading a severity from text.
#include "parsing/severity_level_input.hpp"

#include <algorithm>
#include <istream>
#include <string>

std::istream& qel::logging::operator>>(std::istream& in, severity_level& level) {
    std::string word;
    if (!(in >> word)) return in;
    const auto found = std::find(severity_names.begin(), severity_names.end(), word);
    if (found == severity_names.end()) {
        in.setstate(std::ios_base::failbit);
    } else {
        level = static_cast<severity_level>(found - severity_names.begin());
    }
    return in;
}
