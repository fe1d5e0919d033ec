// The verb `check`.
#include "options.hpp"
#include "parse_flags.hpp"
#include "print_record.hpp"

#include <ostream>

orvane::ExitCode orvane::check(const Tokens& args, std::ostream& out, std::ostream& err) {
    CLI::App app(
        "Parses and validates the server's flags, and prints what they set:\norvane-config check FLAGS...",
        "orvane-config check");
    ExitCode code{};
    const auto flags = take_options(app, args, out, err, code);
    if (!flags) return code;
    qel::config::ServerSettings settings;
    if (parse_and_validate(*flags, settings, err)) return ExitCode::refused;
    out << "configuration accepted\n";
    print_record(settings, out);
    return ExitCode::done;
}
