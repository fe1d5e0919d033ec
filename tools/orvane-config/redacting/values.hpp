// Values without what they tell about their owner.
#pragma once

#include "redacting/words.hpp"
#include "reference/reference.hpp"

namespace orvane::redacting {

/// The value of a flag.
std::u16string value(std::u16string_view text, const Reference& flag, Words& words);

/// A token that is neither a flag nor a value, after a token that was meant as `flag`; null: after none.
std::u16string stray(std::u16string_view text, const Reference* flag, Words& words);

/// The flag that the token was meant as; null: it is none, or unknown.
const Reference* meant_flag(const std::u16string& token);

} // namespace orvane::redacting
