#include "parsing/user_data.hpp"

#include <algorithm>
#include <bit>
#include <functional>

namespace qel::config {
namespace {

using Pair = UserData::Pair;

/// So many pairs are searched one by one. All sizes of the table follow from it, and place_of needs powers of two.
constexpr std::size_t few = 8;
static_assert(std::has_single_bit(few));

/// A pair to be sorted, with the first letters in which keys differ: they mostly decide, without a look at the key.
struct Ranked {
    std::uint64_t letters;
    const Pair* pair;

    bool operator<(const Ranked& other) const {
        return letters != other.letters ? letters < other.letters : pair->first < other.pair->first;
    }
};

/// Four letters, as a number that compares as they do.
std::uint64_t letters_at(std::u16string_view key, std::size_t begin) {
    std::uint64_t letters = 0;
    for (std::size_t at = begin; at != begin + 4; ++at)
        letters = letters << 16 | (at < key.size() ? key[at] : 0U);
    return letters;
}

std::vector<Ranked> sorted(const std::vector<Pair>& pairs) {
    const std::u16string_view first = pairs.front().first;
    auto differing = first.end();
    for (const auto& [key, value] : pairs)
        differing = std::mismatch(first.begin(), differing, key.begin(), key.end()).first;
    const auto shared = static_cast<std::size_t>(differing - first.begin());
    std::vector<Ranked> ranked;
    ranked.reserve(pairs.size());
    for (const Pair& pair : pairs)
        ranked.push_back({letters_at(pair.first, shared), &pair});
    std::ranges::sort(ranked, std::less<>());
    return ranked;
}

} // namespace

Pair* UserData::add(const Pair& pair) {
    std::uint32_t* place = nullptr;
    if (pairs_.size() < few) {
        pairs_.reserve(few);
        const auto same = std::ranges::find(pairs_, pair.first, &Pair::first);
        if (same != pairs_.end()) return &*same;
    } else {
        if (2 * pairs_.size() >= places_.size()) grow();
        place = &place_of(pair.first);
        if (*place != 0) return &pairs_[*place - 1];
    }
    pairs_.push_back(pair);
    if (place != nullptr) *place = static_cast<std::uint32_t>(pairs_.size());
    return nullptr;
}

std::uint32_t& UserData::place_of(std::u16string_view key) {
    const std::size_t mask = places_.size() - 1;
    std::size_t slot = std::hash<std::u16string_view>()(key) & mask;
    while (places_[slot] != 0 && pairs_[places_[slot] - 1].first != key)
        slot = (slot + 1) & mask;
    return places_[slot];
}

void UserData::grow() {
    places_.assign(8 * pairs_.size(), 0);
    std::uint32_t place = 0;
    for (const auto& [key, value] : pairs_)
        place_of(key) = ++place;
}

void UserData::append_to(std::vector<std::pair<std::u16string, std::u16string>>& out) const {
    if (pairs_.empty()) return;
    out.reserve(out.size() + pairs_.size());
    if (std::ranges::is_sorted(pairs_, {}, &Pair::first))
        out.insert(out.end(), pairs_.begin(), pairs_.end());
    else
        for (const Ranked& ranked : sorted(pairs_))
            out.emplace_back(*ranked.pair);
}

} // namespace qel::config
