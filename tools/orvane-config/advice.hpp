// What to tell an operator about a refusal, and the line with it repaired.
#pragma once

#include "asking.hpp"

#include <string>
#include <vector>

namespace orvane {

struct Advice {
    std::vector<std::string> sentences{};
    /// The flags that were probably meant, the likeliest first.
    std::vector<std::string> suggestions{};
    Line repaired{};
};

Advice advise(const Fault& fault);

/// `line` as one would type it in a shell, control characters escaped.
std::string shown(const std::u16string& token);
std::string shown(const Step& step);

/// "token 5", "tokens 5 and 6".
std::string numbers_of(const Step& step);

} // namespace orvane
