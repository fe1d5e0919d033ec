// Whether a proposal means what was typed.
#pragma once

#include "explaining/replacement.hpp"

namespace orvane {

/// Every proposal has to: a number keeps its value, by the library's record; nothing becomes part of a value that looks like a
/// flag, or like a number that was not typed. Otherwise it is no fix, and the value has to be asked for.
bool means_the_same(const FaultInLine& fault, const Edit& edit);

/// The same of an occurrence with another value, which leaves nothing out either.
bool means_the_same(const Occurrence& typed, const Occurrence& fixed);

/// Puts placeholders in the place of the values that would not mean the same.
void ask_for_the_others(const FaultInLine& fault, Advice& advice);

/// What was typed and is not in the proposal, is named by a sentence.
void name_what_is_left_out(const FaultInLine& fault, Advice& advice);

} // namespace orvane
