// The verb `check`.
#include "parse_flags.hpp"
#include "print_record.hpp"

#include <ostream>

orvane::ExitCode orvane::check(const Tokens& flags, std::ostream& out, std::ostream& err) {
    qel::config::ServerSettings settings;
    if (parse_and_validate(flags, settings, err)) return ExitCode::refused;
    out << "configuration accepted\n";
    print_record(settings, out);
    return ExitCode::done;
}
