// The flags with what each of them does, in dispatch order.
#pragma once

#include "parsing/walk.hpp"

#include <span>
#include <string_view>

namespace qel::config {

/// Where the walk goes on once a flag has been taken.
enum class Next {
    all_rows,      ///< the next token is tested against all flags
    falls_through, ///< the next token is tested against the flags below this one only
};

struct Row {
    std::u16string_view flag;
    /// Takes the flag at the cursor with its value, and stores and checks that.
    void (*take)(Walk&);
    Next next = Next::all_rows;
};

std::span<const Row> flag_rows();

} // namespace qel::config
