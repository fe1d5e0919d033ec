// The reference of the flags for people: in a terminal, as a document, as a manual page.
#pragma once

#include "reference/reference.hpp"

#include <iosfwd>
#include <string_view>
#include <vector>

namespace orvane {

/// Of values, in the order of forms.def.
using Forms = std::vector<const FormRow*>;

struct ReferenceFormat {
    std::string_view name;
    std::string_view before;
    void (*write)(const Reference&, bool new_subject, std::ostream&);
    void (*write_forms)(const Forms&, std::ostream&);
};

/// The format of that name, which has to be one of text, markdown and man.
const ReferenceFormat& reference_format(std::string_view name);

/// These flags, and the forms of their values; where `whole` with the subjects, and with all forms.
void write(const std::vector<const Reference*>& flags, const ReferenceFormat& format, bool whole,
           std::ostream& out);

/// Every flag, in the reference's order.
std::vector<const Reference*> all_flags();

} // namespace orvane
