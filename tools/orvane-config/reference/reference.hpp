// What operators are told about each flag.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

struct Reference {
    std::string flag;
    std::string subject;
    std::string value; ///< its form; empty for a switch
    std::string meaning;
    std::string repeated;
    std::string relations; ///< what it requires or excludes; may be empty
    std::string example;   ///< the flag and what follows, quoted for a shell
    std::string sample;    ///< the value in the example
};

/// All flags, those of one subject together.
const std::vector<Reference>& references();

/// The reference of a flag, or null when the text is none.
const Reference* reference_of(std::string_view flag);

/// The words that a value can be, where its form names them all.
std::vector<std::string> keywords(const Reference& reference);

} // namespace orvane
