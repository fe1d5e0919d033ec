// Report and usage take any text, and lay it out as documented.
#include "fuzz.hpp"

void qel::config::fuzz::examine(std::string_view bytes) {
    const Tokens tokens = tokens_from(bytes);
    const FlagSet flags(tokens.begin(), tokens.end());
    std::stringstream out, synopsis;
    report_problems({tokens.begin(), tokens.end()}, flags, out);
    std::string line;
    promise(std::getline(out, line) && line.ends_with(": "), "a header comes first");
    for (const auto& token : tokens)
        promise(std::getline(out, line) && line == ustring_to_utf8(token), "a problem is a line");
    promise(std::getline(out, line) && line.empty() && std::getline(out, line) && line.ends_with(": "),
            "a header");
    for (const auto& flag : flags)
        promise(std::getline(out, line) && line == ustring_to_utf8(flag), "a flag is a line");
    promise(out.peek() == EOF, "nothing else follows");

    const std::u16string name = tokens.empty() ? std::u16string() : tokens[0];
    usage(name, synopsis);
    std::getline(synopsis, line);
    promise(line.starts_with("Usage: " + ustring_to_utf8(name) + " --"), "usage names the program");
    const std::size_t first = line.rfind("--");
    while (std::getline(synopsis, line))
        promise(line.find_first_not_of(' ') == first && line[first] == '[', "a flag stands below the first");
}
