// The rules that find what was probably not intended. Their order and names are in warnings.def.
#pragma once

#include "explaining/warnings.hpp"
#include "reference/reference.hpp"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane {

/// A flag of the line with its value.
struct GivenValue {
    const Occurrence& occurrence;
    const Reference& reference;
    const std::u16string& text;

    bool has(Form form) const { return reference.form == form; }
    bool holds(Holds what) const { return reference.holds(what); }
};

/// What is odd about a value; nothing: its text is empty. `meant` is the value that was intended, where that is certain.
struct Suspicion {
    Suspicion() = default;
    Suspicion(const char* said) : text(said) {}
    Suspicion(std::string said, std::u16string value = {}) : text(std::move(said)), meant(std::move(value)) {}

    std::string text{};
    std::u16string meant{};
};

/// Only the first rule that suspects something is heard.
using ValueRule = Suspicion(const GivenValue& value);

/// An accepted line.
struct AcceptedLine {
    const CommandLine& line;
    const qel::config::ServerSettings& settings;
    const Effects& effects;

    /// The last occurrence of the flag, which is the one that counts; null when there is none.
    const Occurrence* last(std::u16string_view flag) const;
};

/// Collects what a rule finds; each finding is about a flag, about the value of one, or about the line as a whole. A text
/// follows the occurrence.
class WarningCollector {
public:
    explicit WarningCollector(std::string_view id, std::vector<Warning>& warnings)
        : id_(id), warnings_(warnings) {}

    void about_flag(const Occurrence& occurrence, const std::string& text);
    /// Says nothing where the flag was not given.
    void about_value(const Occurrence* occurrence, const std::string& text);
    /// Without the value.
    void about_secret(const Occurrence& occurrence, const std::string& text);
    void about_the_line(std::string text);

private:
    std::string_view id_;
    std::vector<Warning>& warnings_;
};

using LineRule = void(const AcceptedLine& accepted, WarningCollector& warnings);

// About the text of a value (odd_texts.cpp).
ValueRule flag_as_value, empty_value, lone_mark, leading_equals, end_of_line, invisible, blank_at_an_end,
    quotes_around, separator_at_the_end, look_alike, home, variable, template_mark, flag_inside, foreign_path,
    relative_directory;

// About the meaning of a value (odd_values.cpp).
ValueRule negative, hours, host, two_ports, ipv6, empty_host, port_0, origin, profile_off;
LineRule control_port, raised, small_size, small_rotation, zero_timeout, worker_count, severity;

// About several flags (odd_combinations.cpp; the first: odd_directories.cpp).
LineRule same_directory, no_effect, linger_without_http, same_port, no_certificate, access, overflow, archive,
    target, any_origin, given_twice, no_listener;

} // namespace orvane
