// The forms of values. What each room does with one is a column of forms.def.
#pragma once

#include <cstddef>
#include <iterator>
#include <string_view>

namespace orvane {

enum class Form {
#define ZEP_FORM(form, ...) form,
#define ZEP_FOREIGN_FORM(form, ...) form,
#include "reference/forms.def"
};

/// What many rules want to know of a value.
enum class Holds {
    plain,
    path,     ///< of a file or directory
    quantity, ///< a number, perhaps with a unit
    port,     ///< at its end
    command,  ///< which other programs read, by rules that are not known here
    words,    ///< one of those that the form names
};

struct FormRow {
    Holds holds = Holds::plain;
    std::string_view kind{}; ///< empty where only other servers' flags have the form
    std::string_view written{}, largest{}, text{};
};

inline constexpr FormRow forms[] = {
#define ZEP_FORM(form, conversion, reader, fault, redaction, completion, holds, ...)                         \
    {Holds::holds, __VA_ARGS__},
#define ZEP_FOREIGN_FORM(form, conversion, text) {.written = text},
#include "reference/forms.def"
};

/// The place of a form in a column.
constexpr std::size_t place_of(Form form) {
    return static_cast<std::size_t>(form);
}

constexpr const FormRow& row_of(Form form) {
    return forms[place_of(form)];
}

/// By how it is written; none where there is no such form.
constexpr Form form_of(std::string_view written) {
    for (std::size_t i = 0; i != std::size(forms); ++i)
        if (forms[i].written == written) return static_cast<Form>(i);
    return Form::none;
}

} // namespace orvane
