// A command in a setting, as far as it can be read without knowing who splits it into words.
#pragma once

#include <string>

namespace orvane::preflight {

struct CommandWords {
    std::u16string program;      ///< the first word, without quotes
    std::u16string shell_syntax; ///< the first word or mark that only a shell understands; empty: none
};

CommandWords words_of(const std::u16string& command);

} // namespace orvane::preflight
