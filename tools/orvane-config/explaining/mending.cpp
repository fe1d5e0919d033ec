// An accepted line with the values that were meant.
#include "explaining/mending.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

namespace orvane {
namespace {

/// The warnings that know a value, which is then in the tokens.
std::vector<Warning> put_in(std::vector<Token>& tokens, const std::vector<Warning>& warnings) {
    std::vector<Warning> known;
    for (const Warning& warning : warnings) {
        if (warning.meant.empty() || !tokens[warning.token - 1].sample.empty()) continue;
        tokens[warning.token - 1].text = warning.meant;
        known.push_back(warning);
    }
    return known;
}

/// Dirt around dirt; more is left.
constexpr int most_layers = 8;

} // namespace

std::vector<Warning> mend(std::vector<Token>& tokens, Verdict& verdict, const WarningIds& ignored) {
    std::vector<Warning> mended;
    for (int layer = 0; layer != most_layers; ++layer) {
        std::vector<Token> better = tokens;
        std::vector<Warning> known = put_in(better, verdict.warnings);
        if (known.empty()) break;
        Verdict next = judge(tokens_of({better}), false, ignored);
        if (!next.accepted()) break;
        next.places = std::move(verdict.places);
        verdict = std::move(next);
        tokens = std::move(better);
        std::ranges::move(known, std::back_inserter(mended));
    }
    return mended;
}

} // namespace orvane
