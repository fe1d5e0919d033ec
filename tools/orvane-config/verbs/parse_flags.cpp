// The first occurrence of every verb that takes the server's flags.
#include "verbs/parse_flags.hpp"

#include "qel/config/parse_settings.hpp"
#include "qel/config/report.hpp"
#include "qel/config/validate_settings.hpp"

#include <ostream>
#include <sstream>

namespace orvane {
namespace {

boost::system::error_code refuse_if(const boost::system::error_code& verdict, std::ostream& err) {
    if (verdict) err << "orvane-config: configuration refused: " << verdict.message() << '\n';
    return verdict;
}

} // namespace

boost::system::error_code parse_flags(const Tokens& flags, qel::config::ServerSettings& settings,
                                      std::ostream& err) {
    std::ostringstream out;
    const auto verdict = qel::config::parse_settings(settings, flags, out);
    // Most of the library's texts do not end their line.
    const std::string text = out.str();
    err << text;
    if (!text.empty() && text.back() != '\n') err << '\n';
    return refuse_if(verdict, err);
}

boost::system::error_code parse_and_validate(const Tokens& flags, qel::config::ServerSettings& settings,
                                             std::ostream& err) {
    if (const auto refusal = parse_flags(flags, settings, err)) return refusal;
    qel::config::ProblemList problems;
    qel::config::FlagSet involved;
    const auto verdict = qel::config::validate_settings(settings, problems, involved);
    if (verdict) qel::config::report_problems(problems, involved, err);
    return refuse_if(verdict, err);
}

} // namespace orvane
