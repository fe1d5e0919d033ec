// The tool's own options, which stand before the first flag of the server.
#include "verbs/options.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <string>
#include <vector>

namespace orvane {

std::optional<Tokens> take_options(CLI::App& app, const Tokens& args, std::ostream& out, std::ostream& err,
                                   ExitCode& code) {
    // Only the part that is the tool's goes through the option parser; it would read more into the server's
    // flags.
    std::vector<std::string> own;
    auto at = args.begin();
    while (at != args.end()) {
        const std::string token = qel::i18n::ustring_to_utf8(*at);
        const auto equals = token.find('=');
        const CLI::Option* option =
            token.starts_with("-") ? app.get_option_no_throw(token.substr(0, equals)) : nullptr;
        if (option == nullptr) break;
        own.push_back(token);
        ++at;
        if (option->get_expected_min() > 0 && equals == std::string::npos && at != args.end()) {
            own.push_back(qel::i18n::ustring_to_utf8(*at++));
        }
    }
    try {
        std::reverse(own.begin(), own.end()); // as the parser wants it
        app.parse(own);
    } catch (const CLI::CallForHelp&) {
        out << app.help();
        code = ExitCode::done;
        return std::nullopt;
    } catch (const CLI::ParseError& fault) {
        code = misused(app, fault.what(), err);
        return std::nullopt;
    }
    return Tokens(at, args.end());
}

ExitCode misused(const CLI::App& app, const std::string& fault, std::ostream& err) {
    err << app.get_name() << ": " << fault << '\n';
    return ExitCode::misused;
}

} // namespace orvane
