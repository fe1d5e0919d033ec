// The lines of a systemd unit.
#pragma once

#include "formats/format.hpp"

namespace orvane {

/// What separates words.
inline constexpr std::string_view unit_blanks = " \t\r\n";

/// They say how the program is started, such as that its failure is ignored.
inline constexpr std::string_view marks_before_program = "-@:+!|";

struct UnitWord {
    LocatedText text;
    Spot begin;
};

/// A command line as systemd splits it. Throws NotUnderstood.
std::vector<UnitWord> unit_words(const LocatedText& text);

struct UnitSetting {
    std::string name;
    LocatedText value;
};

/// What the section [Service] sets, in order, or a text without sections.
std::vector<UnitSetting> service_settings(const LocatedText& unit);

} // namespace orvane
