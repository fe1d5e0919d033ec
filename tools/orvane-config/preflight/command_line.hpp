// A command in a setting, as far as it can be read without knowing who splits it into words.
#pragma once

#include <string>

namespace orvane::preflight {

struct CommandWords {
    std::u16string program;      ///< the first word, without quotes
    std::u16string shell_syntax; ///< the first word or mark that only a shell understands; empty: none
};

CommandWords words_of(const std::u16string& command);

/// What `env` makes of the first line of a script, from which it gets one argument.
struct EnvWords {
    std::u16string program; ///< what it looks up; empty: it starts none, or its options change where it looks
    bool lacks_split;       ///< several words, and no -S: all of them are one option, which env refuses
};

EnvWords words_of_env(const std::u16string& argument);

} // namespace orvane::preflight
