// User data while the tokens are read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qel::config {

/// Pairs of key and value, one per key. A hash finds keys given again, and the pairs are sorted once, at the end: both
/// together cost a fraction of a tree that is always in order. The texts stay where they are until then.
class UserData {
public:
    using Pair = std::pair<std::u16string_view, std::u16string_view>;

    /// The pair that has this key, unchanged; if there is none, adds the new one and returns null.
    Pair* add(const Pair& pair);
    /// Appends the pairs in ascending order of their keys.
    void append_to(std::vector<std::pair<std::u16string, std::u16string>>& out) const;

private:
    std::uint32_t& place_of(std::u16string_view key);
    void grow();

    std::vector<Pair> pairs_{}; ///< in the order given
    /// A hash table with linear probing: the place of a pair in `pairs_`, counted from 1, or 0. At most half is used.
    std::vector<std::uint32_t> places_{};
};

} // namespace qel::config
