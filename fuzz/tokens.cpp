// Any tokens give one of five codes and throw nothing; what they give is the tokens' doing alone.
#include "fuzz.hpp"

void qel::config::fuzz::examine(std::string_view bytes) {
    const Tokens tokens = tokens_from(bytes);
    const Parsed once = parse(tokens), again = parse(tokens);
    promise(once.settings == again.settings && once.code == again.code && once.text == again.text,
            "same in, same out");
    promise(once.code.category() == error_code::get_category(), "the code is the library's");
    promise(once.code.value() >= 0 && once.code.value() <= 5 && once.code.value() != 1,
            "the code is one of five");
    if (once.code != error_code::success()) return;

    const auto steps = Tokens::difference_type(tokens.size() * static_cast<unsigned char>(bytes[0]) / 256);
    const Parsed front = parse(Tokens(tokens.begin(), tokens.begin() + steps));
    promise(front.code != error_code::parse_error() ||
                front.text.find("', missing argument(s) (") != std::string::npos,
            "the front of an accepted line lacks a value at most");
    promise(front.code != error_code::out_of_range() && front.code != error_code::unrecognized_flag(),
            "nor is it refused");
    const auto& origins = once.settings.cors_allowed_origins(); // "*" stands alone in the whole record
    promise(std::count(origins.begin(), origins.end(), "*") > 0 ||
                parse(tokens, front.settings).code == once.code,
            "an accepted line is accepted into the record of its front too");

    ProblemList problems;
    FlagSet flags;
    const auto code = validate_settings(once.settings, problems, flags);
    promise(code == (problems.empty() ? error_code::success() : error_code::incompatible_flags()),
            "problems are reported");
    promise(problems.empty() == flags.empty(), "a problem names the flags that it is about");
}
