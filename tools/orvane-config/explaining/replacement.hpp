// What to put in the place of a fault, and how to say it.
#pragma once

#include "probing/diagnosis.hpp"
#include "reference/reference.hpp"

#include <optional>
#include <string>
#include <vector>

namespace orvane {

struct Advice {
    std::vector<std::string> sentences{};
    std::vector<std::u16string> suggestions{}; ///< the flags that were probably meant, the likeliest first
    Edit edit{};
};

/// The tokens in the place of the occurrences [begin, end), as the library would take them.
Edit edit_of(const FaultInLine& fault, std::size_t begin, std::size_t end, const std::vector<Token>& tokens);

/// The same, with a sentence that ends with the tokens.
Advice replace(const FaultInLine& fault, std::size_t begin, std::size_t end, const std::vector<Token>& tokens,
               const std::string& sentence, const std::string& ending = "");

/// Proposes to leave the occurrences [begin, end) out.
Advice remove(const FaultInLine& fault, std::size_t begin, std::size_t end, std::string sentence);

/// Proposes nothing; the rest of the line is checked without the occurrences [begin, end).
Advice skip(const FaultInLine& fault, std::size_t begin, std::size_t end, std::string sentence);

/// The flag with a value that the server takes and no rule refuses; otherwise the rules would miss the flag. Empty if the
/// flag was refused with such a value already.
std::vector<Token> with_placeholder(const Occurrence& occurrence);

/// Whether the library takes it by itself.
bool takes(const Occurrence& occurrence);
bool takes(const Token& flag, const std::u16string& value);

/// The value that the flag takes: as it is, or without the marks around it.
std::u16string clean_value(const Reference& flag, std::u16string_view value);

/// The end of the tokens from `from` on that are no flags, and are not meant as flags.
std::size_t end_of_strays(const WorkingLine& line, std::size_t from, bool of_a_command = false);

/// Whether there is at least one.
bool has_strays(const WorkingLine& line, std::size_t from);

/// Whether a unit follows, without which the value would be another.
bool has_unit_after(const WorkingLine& line, std::size_t at);

/// What the reference says of an occurrence's flag.
const Reference& reference_of(const Occurrence& occurrence);

/// Whether it is a flag with its value: only such a one can go on in the next token.
bool has_value(const Occurrence* occurrence);

} // namespace orvane
