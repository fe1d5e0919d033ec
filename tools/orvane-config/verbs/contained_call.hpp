// A call of this tool that a file contains, such as ExecStart=orvane-config exec --from FILE -- SERVER.
#pragma once

#include "formats/source_files.hpp"
#include "verbs/input.hpp"

#include <functional>
#include <string>

namespace orvane {

struct ContainedCall {
    const ReadTokens& tokens;
    const SourceFiles& files;
    std::function<SourcePlace(const ReadToken& token)> place;
};

/// Adds the flags that the server gets from it. Throws std::runtime_error where they are not certain.
void add_call(Input& input, const Call& outer, const ContainedCall& contained);

} // namespace orvane
