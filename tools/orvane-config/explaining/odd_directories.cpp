// Directories that the library takes for different ones, because it compares what does not exist yet as text.
#include "explaining/warning_rules.hpp"
#include "text/lists.hpp"
#include "text/path_anchor.hpp"
#include "text/spelling.hpp"

#include "qel/config/validate_settings.hpp"
#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace orvane {
namespace {

/// The path in one of the ways that lead to the same place. On Windows, a name has neither case nor dots at its end.
std::u16string path_key(std::u16string path) {
    const bool windows = backslash_separates();
    const std::u16string_view separators = windows ? u"/\\" : u"/";
    const std::size_t leading = std::min(path.find_first_not_of(separators), path.size());
    std::u16string key(windows ? leading : std::min<std::size_t>(leading, 1), u'/');
    for (std::u16string element : split_words(windows ? lower(path) : path, separators)) {
        if (element == u".") continue;
        if (windows && element != u"..") element.erase(element.find_last_not_of(u". ") + 1);
        key.append(key.empty() || key.ends_with(u'/') ? u"" : u"/").append(element);
    }
    return key;
}

/// What breaks a rule when the first `count` occurrences have their directories written in one way: the flags.
qel::config::FlagSet involved_in(CommandLine line, std::size_t count) {
    bool changed = false;
    for (std::size_t i = 0; i != count; ++i) {
        const Reference* const flag = reference_of(line[i][0].text);
        if (flag == nullptr || flag->form != Form::directory || line[i].size() != 2) continue;
        std::u16string& path = line[i][1].text;
        changed = std::exchange(path, path_key(path)) != path || changed;
    }
    if (!changed) return {};
    qel::config::ProblemList problems;
    qel::config::FlagSet involved;
    std::ignore = qel::config::validate_settings(ask(line).settings, problems, involved);
    return involved;
}

} // namespace

void same_directory(const AcceptedLine& accepted, WarningCollector& warnings) {
    const CommandLine& line = accepted.line;
    if (involved_in(line, line.size()).empty()) return;
    std::size_t fine = 0, bad = line.size();
    while (bad - fine > 1) {
        const std::size_t middle = fine + (bad - fine) / 2;
        (involved_in(line, middle).empty() ? fine : bad) = middle;
    }
    const auto text = [](const auto& flag) { return qel::i18n::ustring_to_utf8(flag); };
    warnings.about_value(&line[bad - 1], ": written alike, the directories of " +
                                             joined(involved_in(line, bad), " and ", text) +
                                             " would be refused");
}

} // namespace orvane
