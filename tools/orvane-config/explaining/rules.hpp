// The rules of advice. Each looks at a fault and says what was meant, or nothing when the fault is of another kind; their
// order is in advice.cpp.
#pragma once

#include "explaining/replacement.hpp"

#include <cstdint>

namespace orvane {

using Rule = std::optional<Advice>(const FaultInLine& fault);

// About tokens that are not flags where one is expected (pasted_text.cpp).
Rule empty_token, own_option, program_before_flags, lone_mark, shell_syntax, comment;

// About names (flag_names.cpp).
Rule several_words, misspelt, attached_value, similar_name, unknown_name;

// About names that other servers have for a setting, or for its reverse (foreign_names.cpp).
Rule other_polarity, foreign_name;

// About values in the wrong place (misplaced_values.cpp).
Rule limited, swallowed_flag, mark_for_a_value, given_twice, goes_on, before_its_flag, split_by_the_shell,
    repeated, switch_value, surplus;

// About values that are refused (refused_values.cpp).
Rule missing_value, swallowing_flag, marked_value, dirty_value, similar_word, split_value, read_otherwise,
    swapped, similar_flag, in_the_way, out_of_range, wrong_form;

/// What the value may have meant, in the form that the server takes (foreign_values.cpp); empty when it cannot be read.
struct Reading {
    std::u16string value;
    std::string why;
    std::u16string sample{}; ///< when part of it had to be made up; of a cache's provider its <name>
};
using Readings = std::vector<Reading>;
/// The value's token; a placeholder when part of it had to be made up.
Token token_of(const Reading& reading, std::size_t number);
Readings readings(const Reference& reference, const std::u16string& value);

/// The same for amounts of time and of memory, and for numbers (foreign_quantities.cpp).
using Amount = std::uint64_t; ///< microseconds, bytes, or a number
std::optional<Amount> amount_of(const std::u16string& value, Form form);
using ReadForeign = Readings(const std::u16string& value, const Reference& reference);
ReadForeign durations, sizes, numbers;

/// Whether it is one of their units, in lower case.
bool is_unit(const std::u16string& word);

/// What is in the place of the port of an address; empty if that cannot be said.
std::string why_no_port(const std::u16string& value);

/// Whether the value of the occurrence at `position` goes on in the tokens that follow it.
std::optional<Advice> joined_value(const FaultInLine& fault, std::size_t position);

/// "&&", ">", "2>&1".
bool is_for_a_shell(std::u16string_view token);

/// Whether other notations put it between a flag and its value: "=", "--", "\".
bool is_mark(std::u16string_view value);

/// For "--http=9910", whose name is that of a flag, or means one.
Advice with_value_after(const FaultInLine& fault, const Reference& meant, char16_t separator,
                        std::u16string_view rest, std::vector<std::string> sentences);

} // namespace orvane
