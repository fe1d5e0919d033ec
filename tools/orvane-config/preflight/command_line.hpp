// A command in a setting, as far as it can be read without knowing who splits it into words.
#pragma once

#include <string>

namespace orvane::preflight {

struct CommandWords {
    std::u16string program;      ///< the first word, without quotes
    std::u16string shell_syntax; ///< the first word or mark that only a shell understands; empty: none
};

CommandWords words_of(const std::u16string& command);

/// The program that `env` looks up when it gets this from the first line of a script, as one argument. Empty: it starts
/// none, or its options change where it looks.
std::u16string program_of_env(const std::u16string& argument);

} // namespace orvane::preflight
