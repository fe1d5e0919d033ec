// Which flag was meant by a name.
#include "explaining/meant_flags.hpp"

#include "qel/i18n/convert.hpp"
#include "text/lists.hpp"
#include "text/spelling.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <unordered_map>

namespace orvane {
namespace {

/// "workers" and "worker" are one word.
std::u16string singular(std::u16string word) {
    if (word.size() > 3 && word.back() == u's' && word[word.size() - 2] != u's') word.pop_back();
    return word;
}

/// The words of all flags, each with a number.
const std::unordered_map<std::u16string, int>& known_words() {
    static const std::unordered_map<std::u16string, int> all = [] {
        std::unordered_map<std::u16string, int> numbers;
        for (const Reference& one : references())
            for (std::u16string& word : split_words(normalized(one.wide)))
                numbers.emplace(singular(std::move(word)), numbers.size());
        return numbers;
    }();
    return all;
}

/// The words of a name. Those that no flag has are only counted.
struct WordSet {
    std::size_t size = 0;
    std::vector<int> known{}; ///< sorted
};

WordSet word_set(std::u16string_view words) {
    WordSet set;
    for (std::u16string& word : split_words(words)) {
        ++set.size;
        const auto number = known_words().find(singular(std::move(word)));
        if (number != known_words().end()) set.known.push_back(number->second);
    }
    std::sort(set.known.begin(), set.known.end());
    return set;
}

/// How many words two names have in common.
std::size_t common_words(const WordSet& a, const WordSet& b) {
    std::size_t count = 0;
    for (auto left = a.known.begin(), right = b.known.begin();
         left != a.known.end() && right != b.known.end();) {
        if (*left == *right)
            ++count, ++left, ++right;
        else if (*left < *right)
            ++left;
        else
            ++right;
    }
    return count;
}

/// How often each letter occurs.
using Counts = std::array<std::int8_t, 32>;

Counts counts_of(std::u16string_view text) {
    Counts counts{};
    for (const char16_t c : text)
        ++counts[c % counts.size()];
    return counts;
}

/// The least number of changes that can turn one text into the other.
std::size_t least_distance(const Counts& a, const Counts& b) {
    int more = 0, fewer = 0;
    for (std::size_t i = 0; i != a.size(); ++i)
        (a[i] > b[i] ? more : fewer) += std::abs(a[i] - b[i]);
    return static_cast<std::size_t>(std::max(more, fewer));
}

struct Name {
    const Reference* flag;
    std::u16string words, letters;
    std::u16string core; ///< the letters of the words that name the thing
    WordSet set;
    Counts counts;
};

const std::vector<Name>& names() {
    static const std::vector<Name> all = [] {
        std::vector<Name> names;
        for (const Reference& one : references())
            names.push_back({&one, normalized(one.wide), letters(one.wide),
                             letters(qel::i18n::utf8_to_ustring(std::string(one.core))),
                             word_set(normalized(one.wide)), counts_of(letters(one.wide))});
        return names;
    }();
    return all;
}

/// The best of what was seen so far.
struct Nearest {
    std::size_t far;
    std::vector<const Reference*> flags{};

    void see(std::size_t candidate, const Reference* flag) {
        if (candidate > far) return;
        if (candidate < far) flags.clear();
        far = candidate;
        flags.push_back(flag);
    }

    /// Nobody would want to read more.
    std::vector<const Reference*> few() const {
        return flags.size() > 3 ? std::vector<const Reference*>() : flags;
    }
};

std::size_t words_apart(const WordSet& a, const WordSet& b) {
    const std::size_t common = common_words(a, b);
    return common == 0 ? 99 : a.size + b.size - 2 * common;
}

/// Flags with all the words, and as few others as possible.
std::vector<const Reference*> with_the_words(const WordSet& set) {
    Nearest nearest{9};
    for (const Name& name : names())
        if (common_words(name.set, set) == set.size) nearest.see(name.set.size - set.size, name.flag);
    return nearest.few();
}

/// With a difference in one letter of `each`.
std::vector<const Reference*> with_the_letters(const std::u16string& words, std::size_t each) {
    const std::u16string typed = letters(words);
    const Counts counts = counts_of(typed);
    Nearest nearest{typed.size()};
    for (const Name& name : names()) {
        const std::size_t most = std::max<std::size_t>(1, std::min(typed.size(), name.letters.size()) / each);
        const bool shortened = typed.size() > 2 && name.words.starts_with(words);
        const std::size_t far = std::min(
            least_distance(counts, name.counts) > most ? most + 1 : distance(typed, name.letters, most),
            shortened ? std::size_t{1} : most + 1);
        if (far <= most) nearest.see(far, name.flag);
    }
    if (nearest.flags.size() > 3) nearest.flags.resize(3);
    return nearest.flags;
}

constexpr std::array switching_off = {u"no",   u"not",  u"non",      u"disable", u"disallow", u"deny",
                                      u"dont", u"hide", u"suppress", u"without", u"ignore"};
constexpr std::array switching_on = {u"enable", u"allow", u"use", u"show", u"with"};

std::vector<const Reference*> flags_with_words(const std::u16string& words) {
    const auto set = word_set(words);
    if (auto same = with_the_words(set); same.size() == 1 && set.size > 1) return same;
    if (auto like = with_the_letters(words, 4); !like.empty()) return like;
    if (auto more = with_the_words(set); !more.empty()) return more;
    Nearest nearest{2}; // a word too many, or another word
    for (const Name& name : names())
        if (const std::size_t apart = words_apart(set, name.set); apart <= 2 && set.size > 1)
            nearest.see(apart, name.flag);
    if (!nearest.flags.empty()) return nearest.few();
    const auto like = with_the_letters(words, 3);
    return like.size() == 1 && words.size() > 6 ? like : std::vector<const Reference*>();
}

std::optional<Polarity> flag_switched(const std::vector<std::u16string>& words, bool wanted) {
    std::u16string rest;
    for (const std::u16string& word : words)
        rest += word;
    for (const Name& name : names()) {
        const Reference& flag = *name.flag;
        if (flag.is_switch() && !name.core.empty() && (name.core == rest || name.letters == rest)) {
            const bool about_core = name.core == rest;
            const bool asks = about_core ? wanted == (flag.way == Way::on) : wanted;
            return Polarity{&flag, !asks};
        }
        if (!flag.is_switch() && !wanted && name.letters == rest) return Polarity{&flag, true};
    }
    return std::nullopt;
}

} // namespace

const Reference* flag_spelled(std::u16string_view text) {
    const std::u16string typed = letters(text);
    if (typed.empty()) return nullptr;
    const auto found = std::ranges::find(names(), typed, &Name::letters);
    return found == names().end() ? nullptr : found->flag;
}

std::vector<const Reference*> flags_like(std::u16string_view text) {
    // Asked again about the same token by the rules for its neighbours.
    static std::unordered_map<std::u16string, std::vector<const Reference*>> known;
    const std::u16string words = normalized(text);
    if (words.size() < 2 || words.size() > 80) return {};
    const auto found = known.find(words);
    return found != known.end() ? found->second : known.emplace(words, flags_with_words(words)).first->second;
}

std::optional<Polarity> polarity_of(std::u16string_view text) {
    const std::vector<std::u16string> words = split_words(normalized(text));
    // Also within: --x509-no-crl.
    for (std::size_t i = 0; i != words.size(); ++i) {
        const bool off = contains(switching_off, words[i]);
        if (!off && !contains(switching_on, words[i])) continue;
        std::vector<std::u16string> others = words;
        others.erase(others.begin() + static_cast<std::ptrdiff_t>(i));
        if (auto found = flag_switched(others, !off)) return found;
    }
    return flag_switched(words, true);
}

} // namespace orvane
