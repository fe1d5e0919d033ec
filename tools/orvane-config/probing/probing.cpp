// What can be learnt of a command line by asking the library.
#include "probing/probing.hpp"

#include "reference/reference.hpp"

#include "qel/config/error_code.hpp"
#include "qel/config/parse_settings.hpp"

#include <sstream>

namespace orvane {

bool Answer::consumed() const {
    return !code || code == qel::config::error_code::missing_required_flag();
}

Answer ask(const Tokens& tokens, qel::config::ServerSettings record) {
    Answer answer{{}, {}, std::move(record)};
    std::ostringstream out;
    answer.code = qel::config::parse_settings(answer.settings, tokens, out);
    answer.text = out.str();
    return answer;
}

Answer ask(const CommandLine& line) {
    return ask(tokens_of(line));
}

FlagKind kind_of(const std::u16string& token) {
    const Reference* const reference = reference_of(token);
    if (reference == nullptr) return FlagKind::no_flag;
    return reference->is_switch() ? FlagKind::switch_flag : FlagKind::value_flag;
}

CommandLine occurrences_of(const Tokens& tokens) {
    CommandLine line;
    for (std::size_t i = 0; i != tokens.size(); ++i) {
        Occurrence& occurrence = line.emplace_back(Occurrence{{tokens[i], i + 1}});
        if (kind_of(tokens[i]) != FlagKind::value_flag || i + 1 == tokens.size()) continue;
        ++i;
        occurrence.push_back({tokens[i], i + 1});
    }
    return line;
}

CommandLine without(CommandLine line, std::size_t position) {
    line.erase(line.begin() + static_cast<std::ptrdiff_t>(position));
    return line;
}

std::vector<Token> tokens_in(const CommandLine& line) {
    std::vector<Token> tokens;
    for (const Occurrence& occurrence : line)
        tokens.insert(tokens.end(), occurrence.begin(), occurrence.end());
    return tokens;
}

Tokens tokens_of(const CommandLine& line) {
    Tokens tokens;
    for (const Occurrence& occurrence : line)
        for (const Token& token : occurrence)
            tokens.push_back(token.text);
    return tokens;
}

Occurrence occurrence_of(std::u16string flag, std::u16string value) {
    return {{std::move(flag)}, {std::move(value)}};
}

} // namespace orvane
