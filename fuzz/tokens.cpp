// Any tokens give one of five codes and never an exception; the result depends only on the tokens.
#include "fuzz.hpp"

void examine(std::string_view bytes) {
    const Tokens tokens = tokens_from(bytes);
    const Parsed once = parse(tokens), again = parse(tokens);
    promise(once.settings == again.settings && once.code == again.code && once.text == again.text,
            "same in, same out");
    const int code = once.code.value();
    promise(code >= 0 && code <= 5 && code != 1, "the code is one of five");
    if (code != 0) return;

    const auto steps = Tokens::difference_type(tokens.size() * static_cast<unsigned char>(bytes[0]) / 256);
    const Parsed front = parse(Tokens(tokens.begin(), tokens.begin() + steps));
    const bool cut = front.text.find("', missing argument(s) (") != std::string::npos;
    promise(front.code == once.code || front.code == error_code::missing_required_flag() || cut,
            "its front is accepted");
    const auto& origins = once.settings.cors_allowed_origins(); // "*" must be the only origin
    promise(std::count(origins.begin(), origins.end(), "*") > 0 ||
                parse(tokens, front.settings).code == once.code,
            "an accepted line is accepted into the record of its front too");

    ProblemList problems;
    FlagSet flags;
    const bool refused =
        validate_settings(once.settings, problems, flags) == error_code::incompatible_flags();
    promise(refused != problems.empty() && problems.empty() == flags.empty(),
            "a refusal has a problem, and that its flags");
}
