// An accepted line with the values that were meant.
#include "explaining/mending.hpp"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

namespace orvane {
namespace {

/// Those that know a value, but for a placeholder.
std::vector<Warning> known_in(const Verdict& verdict, const std::vector<Token>& tokens) {
    std::vector<Warning> known;
    for (const Warning& warning : verdict.warnings)
        if (!warning.meant.empty() && tokens[warning.token - 1].sample.empty()) known.push_back(warning);
    return known;
}

/// Puts their values into the line; returns whether the server takes it so, else nothing changes.
bool put_in(std::span<const Warning> warnings, std::vector<Token>& tokens, Verdict& verdict,
            const WarningIds& ignored) {
    std::vector<Token> better = tokens;
    for (const Warning& warning : warnings)
        better[warning.token - 1].text = warning.meant;
    Verdict next = judge(tokens_of({better}), false, ignored);
    if (!next.accepted()) return false;
    next.places = std::move(verdict.places);
    verdict = std::move(next);
    tokens = std::move(better);
    return true;
}

/// Dirt around dirt; more is left.
constexpr int most_layers = 8;
/// Of so many it is found out which the server does not take together with the others.
constexpr std::size_t most_tried = 50;

} // namespace

std::vector<Warning> mend(std::vector<Token>& tokens, Verdict& verdict, const WarningIds& ignored) {
    std::vector<Warning> mended;
    for (int layer = 0; layer != most_layers; ++layer) {
        std::vector<Warning> known = known_in(verdict, tokens);
        if (!known.empty() && !put_in(known, tokens, verdict, ignored)) {
            known.resize(std::min(known.size(), most_tried));
            std::erase_if(known, [&](const Warning& one) {
                return !put_in({&one, 1}, tokens, verdict, ignored);
            });
        }
        if (known.empty()) break;
        std::ranges::move(known, std::back_inserter(mended));
    }
    return mended;
}

} // namespace orvane
