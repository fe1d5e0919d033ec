// The flags and what each of them does, in dispatch order.
#pragma once

#include "parsing/walk.hpp"

#include <span>
#include <string_view>

namespace qel::config {

/// Which flags the next token is compared with after a flag has been taken.
enum class Next {
    all_rows,      ///< all flags
    falls_through, ///< only the flags below this one
};

struct Row {
    std::u16string_view flag;
    /// Takes the flag at the cursor and its value, and stores and checks the value.
    void (*take)(Walk&);
    Next next = Next::all_rows;
};

std::span<const Row> flag_rows();

} // namespace qel::config
