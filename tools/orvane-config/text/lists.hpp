// Lists: what is in them, and texts that are taken apart into them or put together from them.
#pragma once

#include <algorithm>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace orvane {

/// The parts of a list between separators, which are any of these characters. Nothing follows one at the end.
template <class Char = char>
constexpr std::vector<std::basic_string_view<Char>>
split(std::type_identity_t<std::basic_string_view<Char>> list,
      std::type_identity_t<std::basic_string_view<Char>> separators) {
    std::vector<std::basic_string_view<Char>> parts;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find_first_of(separators), list.size());
        parts.push_back(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return parts;
}

template <class Range, class Value>
constexpr bool contains(const Range& all, const Value& one) {
    return std::find(std::begin(all), std::end(all), one) != std::end(all);
}

/// The texts, or what `text_of` makes of each, with this between them, and `last` before the last one.
template <class Texts, class TextOf = std::identity>
std::string joined(const Texts& texts, std::string_view between, TextOf text_of, std::string_view last) {
    std::string list;
    std::size_t left = std::size(texts);
    for (const auto& text : texts) {
        list += std::invoke(text_of, text);
        if (--left != 0) list += left == 1 ? last : between;
    }
    return list;
}

template <class Texts, class TextOf = std::identity>
std::string joined(const Texts& texts, std::string_view between = ", ", TextOf text_of = {}) {
    return joined(texts, between, text_of, between);
}

} // namespace orvane
