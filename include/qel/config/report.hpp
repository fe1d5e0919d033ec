// The problem report and the usage text.
#pragma once

#include "qel/config/export.hpp"
#include "qel/config/validate_settings.hpp"

#include <iosfwd>
#include <string>

namespace qel::config {

/// Writes a header, the problems one a line, an empty line, a second header, and the flags one a line, as
/// UTF-8. Every line is flushed. Both headers are written even when the containers are empty. The stream's
/// state is not checked. Throws std::bad_alloc; a stream that has exceptions enabled lets its own pass out. What
/// was written stays written.
ZEP_CONFIG_API void report_problems(const ProblemList& problems, const FlagSet& flags, std::ostream& out);

/// Writes the synopsis of the most important flags for a program of the name `program`; returns `out`. The
/// stream's state is not checked. Throws std::bad_alloc; a stream that has exceptions enabled lets its own pass
/// out. What was written stays written.
ZEP_CONFIG_API std::ostream& usage(const std::u16string& program, std::ostream& out);

} // namespace qel::config
