// Which form each flag's value has, for tables that name flags.
#pragma once

#include "reference/flag_texts.hpp"
#include "reference/forms.hpp"

#include <algorithm>

namespace orvane {

struct FlagForm {
    std::u16string_view flag;
    Form form;
};

inline constexpr FlagForm flag_forms[] = {
#define ZEP_SUBJECT(title)
#define ZEP_REFERENCE(name, form, ...) {flag::name, Form::form},
#define ZEP_SWITCH(name, ...) {flag::name, Form::none},
#include "reference/reference.def"
};

/// Whether the rows name each flag whose value has this form, once, and no other flag.
template <class Rows>
constexpr bool name_all(const Rows& rows, Form form) {
    return std::ranges::all_of(flag_forms, [&](const FlagForm& one) {
        const auto names_it = [&](const auto& row) { return row.flag == one.flag; };
        return std::ranges::count_if(rows, names_it) == (one.form == form ? 1 : 0);
    });
}

} // namespace orvane
