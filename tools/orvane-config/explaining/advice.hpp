// What to tell an operator about a refusal, and what to put in its place.
#pragma once

#include "explaining/replacement.hpp"

namespace orvane {

Advice advise(const FaultInLine& fault);

} // namespace orvane
