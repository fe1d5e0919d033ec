// The problem report and the usage text.
#pragma once

#include "qel/config/export.hpp"
#include "qel/config/validate_settings.hpp"

#include <iosfwd>
#include <string>

namespace qel::config {

/// Writes to `out`, in UTF-8: a header, the problems, one per line, an empty line, a second header, and the flags, one
/// per line. Every line is flushed. Both headers are written even if the containers are empty. The stream's state is
/// not checked. Throws std::bad_alloc, and whatever a stream with exceptions enabled throws; what was written until
/// then stays written.
ZEP_CONFIG_API void report_problems(const ProblemList& problems, const FlagSet& flags, std::ostream& out);

/// Writes the usage text of a program named `program`, with the most important flags; returns `out`. The stream's state
/// is not checked. Throws std::bad_alloc, and whatever a stream with exceptions enabled throws; what was written until
/// then stays written.
ZEP_CONFIG_API std::ostream& usage(const std::u16string& program, std::ostream& out);

} // namespace qel::config
