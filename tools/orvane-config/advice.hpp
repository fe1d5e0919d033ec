// What to tell an operator about a refusal, and what to put in its place.
#pragma once

#include "asking.hpp"

#include <string>
#include <vector>

namespace orvane {

struct Advice {
    std::vector<std::string> sentences{};
    /// The flags that were probably meant, the likeliest first.
    std::vector<std::string> suggestions{};
    Edit repair{};
};

/// About the fault at a step of the line; at its end, when the line as a whole is refused.
Advice advise(const Fault& fault, const Line& line, std::size_t position);

/// As one would type it in a shell, what cannot be seen in it escaped.
std::string shown(const std::u16string& token);
std::string shown(const Step& step);

/// "token 5", "tokens 5 and 6".
std::string numbers_of(const Step& step);

} // namespace orvane
