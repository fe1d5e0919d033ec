// The lines of a systemd unit.
#pragma once

#include "formats/format.hpp"

namespace orvane {

/// What separates words.
inline constexpr std::string_view unit_blanks = " \t\r\n";

/// What ExecStart= of the section [Service] is set to, or of a text without sections. Throws NotUnderstood when there is
/// none, or more than one.
LocatedText exec_start_of(const LocatedText& unit);

} // namespace orvane
