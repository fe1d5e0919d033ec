// The manual page of the server's flags, from their reference.
#include "manuals/pages.hpp"
#include "printing/reference_text.hpp"
#include "printing/roff.hpp"

#include <ostream>

namespace orvane::manuals {

void write_flags(std::ostream& out) {
    out << ".SH DESCRIPTION\n"
        << roff(
               "The Orvane server is configured by these flags alone. A flag and its value are two tokens of "
               "the command line. 'orvane-config check FLAGS...' says what the flags set, or what is wrong "
               "with them. 'In other servers' lists what other servers call a flag.")
        << '\n';
    write(all_flags(), reference_format("man"), true, out);
}

} // namespace orvane::manuals
