// Words of a Windows program's command line.
#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// A word as the C runtime's parser reads it back. Without need it has no quotes: some programs read their line themselves.
std::u16string windows_word(std::u16string_view word, bool always_quoted = false);

/// Whether cmd.exe runs the program. It then parses the words again, differently.
bool is_batch_file(std::u16string_view program);

/// Whether cmd.exe leaves a word in quotes as it is, and takes no part of it for a variable or a command.
bool is_safe_for_cmd(std::u16string_view word);

} // namespace orvane
