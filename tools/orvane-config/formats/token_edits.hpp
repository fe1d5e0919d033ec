// Tokens that change in the text of a file, where everything else stays as it is.
#pragma once

#include "formats/format_table.hpp"
#include "text/line_edits.hpp"

#include <string>
#include <vector>

namespace orvane {

/// UTF-8, and the position of the token whose place it takes, counted from 1; 0: it is added.
struct NewToken {
    std::string text;
    std::size_t replaces = 0;
};

/// What makes of the tokens that are read from a text those that are wanted: of a token that changes its bytes, and of one
/// that goes the line if nothing else is on it. What is added is behind the token before it. Throws CannotHold.
std::vector<LineEdit> token_edits(const LineFormat& format, const std::string& text, const ReadTokens& tokens,
                                  const std::vector<NewToken>& wanted);

} // namespace orvane
