// Report and usage accept any text, and lay it out as documented.
#include "fuzz.hpp"

void examine(std::string_view bytes) {
    const Tokens tokens = tokens_from(bytes);
    const FlagSet flags(tokens.begin(), tokens.end());
    std::stringstream out, synopsis;
    report_problems({tokens.begin(), tokens.end()}, flags, out);
    std::string line;
    const auto expect = [&](const std::string& text) {
        promise(std::getline(out, line) && line == text, "a text is a line");
    };
    expect("One or more configuration problem(s) detected: ");
    for (const auto& token : tokens)
        expect(ustring_to_utf8(token));
    expect("");
    expect("Please fix the following flag(s) before restarting: ");
    for (const auto& flag : flags)
        expect(ustring_to_utf8(flag));
    promise(out.peek() == EOF, "nothing else follows");
    usage(tokens[0], synopsis);
    std::getline(synopsis, line);
    promise(line.starts_with("Usage: " + ustring_to_utf8(tokens[0]) + " --"), "usage names the program");
    const std::size_t first = line.rfind("--");
    while (std::getline(synopsis, line))
        promise(line.find_first_not_of(' ') == first && line[first] == '[', "a flag stands below the first");
}
