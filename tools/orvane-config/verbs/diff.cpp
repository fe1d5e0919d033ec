// The verb `diff`: what the server would do differently.
#include "explaining/flag_like.hpp"
#include "printing/json.hpp"
#include "printing/settings_text.hpp"
#include "printing/verdict_text.hpp"
#include "probing/settings.hpp"
#include "verbs/given_ids.hpp"
#include "verbs/input.hpp"
#include "verbs/refusal.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <ostream>

namespace orvane {
namespace {

/// FLAGS, or a single word that names a file of them.
Input side_of(const Call& call, const Tokens& words) {
    if (words.size() == 1 && (words[0] == u"-" || !begins_as_flag(words[0])))
        return input_from(call, own("from"), qel::i18n::ustring_to_utf8(words[0]));
    return {.flags = words};
}

/// The two lines: from options first, then from words.
std::vector<Input> sides_of(const Call& call) {
    std::vector<Input> sides = inputs_of_options(call);
    const Tokens& words = call.words;
    const auto end = end_of_flags({}, words);
    if (!sides.empty() && !words.empty()) {
        sides.push_back(side_of(call, words));
    } else if (end != words.end()) {
        sides.push_back(side_of(call, {words.begin(), end}));
        sides.push_back(side_of(call, {end + 1, words.end()}));
    } else if (std::ranges::none_of(words, begins_as_flag)) {
        for (const std::u16string& word : words)
            sides.push_back(side_of(call, {word}));
    }
    if (sides.size() != 2) throw MisusedInPublic("give two command lines: two files, or FLAGS -- FLAGS");
    if (call.has(own("redact"))) {
        const auto lines = call.redactor.lines({sides[0].flags, sides[1].flags});
        sides[0].flags = lines[0];
        sides[1].flags = lines[1];
    }
    return sides;
}

void print_differences(const std::vector<Difference>& found, const Verdict& before, const Verdict& after,
                       std::ostream& out) {
    for (const Difference& one : found) {
        print_with_origin("- ", one.before, before, out);
        print_with_origin("+ ", one.after, after, out);
    }
}

/// As `diff` ends.
constexpr ExitCode equal = ExitCode::done, different = ExitCode::negative, trouble = ExitCode::misused;

ExitCode compare(const Call& call) {
    const std::vector<Input> sides = sides_of(call);
    const WarningIds ignored = ignored_warnings(call);
    const Verdict before = judge(sides[0], true, ignored), after = judge(sides[1], true, ignored);
    for (const Verdict* verdict : {&before, &after}) {
        const ExitCode code = verdict_code(call, *verdict);
        if (code == ExitCode::done) continue;
        call.err << "orvane-config: the " << (verdict == &before ? "first" : "second")
                 << (code == ExitCode::warned ? " command line has warnings\n"
                                              : " command line is refused\n");
        print_verdict(*verdict, call.err, wanted_ids(call));
        return code == ExitCode::warned ? code : trouble;
    }
    const auto found = differences(before.answer.settings, after.answer.settings);
    const bool same_tokens = sides[0].flags == sides[1].flags;
    if (call.has(own("quiet"))) return found.empty() ? equal : different;
    if (call.wants_json())
        call.out << diff_json(before, after, found, same_tokens) << '\n';
    else if (found.empty())
        call.out << (same_tokens ? "the command lines are equal\n"
                                 : "the command lines differ, the settings are equal\n");
    else
        print_differences(found, before, after, call.out);
    return found.empty() ? equal : different;
}

} // namespace

ExitCode verb::diff(const Call& call) {
    try {
        return compare(call);
    } catch (const Misused&) {
        throw;
    } catch (const std::exception& failure) {
        call.err << "orvane-config: " << failure.what() << '\n';
        return trouble;
    }
}

} // namespace orvane
