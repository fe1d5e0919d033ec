// What other servers call the settings of this one.
#include "reference/reference.hpp"

#include "text/lists.hpp"

#include <cstddef>
#include <unordered_map>

namespace orvane {
namespace {

/// A name of reference.def with what it takes, taken apart.
Synonym synonym(const Reference& reference, std::string_view entry) {
    const std::size_t end = entry.find_first_of("=>");
    const std::string_view rest = end == entry.npos ? "" : entry.substr(end + 1);
    const bool takes_value = end != entry.npos && entry[end] == '=';
    return {entry.substr(0, end),
            &reference,
            takes_value ? form_of(rest) : Form::none,
            std::string(takes_value ? "" : rest),
            {}};
}

std::string without_hyphens(std::string_view name) {
    std::string text(name);
    std::erase(text, '-');
    return text;
}

/// What other servers' names mean, by the name and by the name without its hyphens. The first of several stays.
struct ForeignNames {
    std::unordered_map<std::string_view, Synonym> exact{};
    std::unordered_map<std::string, Synonym> loose{};

    void add(const Synonym& synonym) {
        exact.emplace(synonym.name, synonym);
        loose.emplace(without_hyphens(synonym.name), synonym);
    }
};

const ForeignNames& foreign_names() {
    static const ForeignNames all = [] {
        ForeignNames names;
        for (const Reference& one : references())
            for (const Synonym& synonym : synonyms_of(one))
                names.add(synonym);
#define ZEP_FOREIGN(foreign, text)                                                                           \
    for (const std::string_view name : split(foreign, " "))                                                  \
        names.add({name, nullptr, {}, {}, with_flags(text)});
#include "reference/foreign.def"
        return names;
    }();
    return all;
}

} // namespace

std::vector<Synonym> synonyms_of(const Reference& reference) {
    std::vector<Synonym> all;
    for (const std::string_view entry : split(reference.synonyms, " "))
        all.push_back(synonym(reference, entry));
    return all;
}

std::optional<Synonym> synonym_of(std::string_view words) {
    // "maxmemory" and "max-memory" are not the same.
    const ForeignNames& names = foreign_names();
    if (const auto exact = names.exact.find(words); exact != names.exact.end()) return exact->second;
    const auto loose = names.loose.find(without_hyphens(words));
    return loose == names.loose.end() ? std::nullopt : std::optional(loose->second);
}

} // namespace orvane
