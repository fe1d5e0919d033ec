// What the kinds of faults, rules, warnings, hazards and findings mean.
#include "printing/explanations.hpp"

#include "explaining/hazards.hpp"
#include "preflight/findings.hpp"
#include "printing/wrapping.hpp"
#include "reference/reference.hpp"
#include "text/quoting.hpp"

#include <algorithm>
#include <iterator>
#include <ostream>

namespace orvane {
namespace {

using Entries = std::vector<Explanation>;

/// What follows the cause.
struct Detail {
    const char* name;
    std::string text;
    bool is_code;
};

std::vector<Detail> details(const Explanation& kind) {
    std::vector<Detail> rows;
    if (!kind.example.empty()) rows.push_back({"Example", kind.example, true});
    if (kind.cause.empty()) return rows;
    rows.push_back(kind.fix.empty() ? Detail{"Fix", "leave the flag out", false}
                                    : Detail{"Fix", kind.fix, true});
    return rows;
}

/// What a finding leads to, and what to type for the place and the remedy.
std::string how_to_look(std::string_view id) {
    const auto& kind = *std::ranges::find(preflight::kinds_of_findings(), id, &preflight::KindOfFinding::id);
    return "Severity: " + std::string(to_text(kind.severity)) + ". 'orvane-config preflight " +
           (kind.group.empty() ? "" : "--only " + std::string(kind.group) + " ") + "FLAGS...' says where" +
           (kind.severity == preflight::Severity::ok ? "." : ", and what to do about it.");
}

void write_entries_as_text(const Entries& kinds, std::ostream& out) {
    for (const Explanation& kind : kinds) {
        const Hazard* const hazard = hazard_of(kind.id);
        const std::string level = hazard == nullptr ? "" : ", " + std::string(to_text(hazard->level));
        out << wrapped(kind.id + " (" + std::string(kind.about) + level + "): " + kind.summary, 0) << '\n';
        if (!kind.cause.empty()) out << wrapped("Cause: " + kind.cause, 4, 2) << '\n';
        for (const auto& [name, text, is_code] : details(kind))
            out << wrapped(std::string(name) + ": " + text, 4, 2, is_code ? continuation() : "") << '\n';
        if (kind.about == "finding") out << wrapped(how_to_look(kind.id), 4, 2) << '\n';
        out << '\n';
    }
}

void write_entries_as_markdown(const Entries& kinds, std::ostream& out) {
    for (const Explanation& kind : kinds) {
        out << "### `" << kind.id << "`: " << kind.summary << "\n\n" << kind.cause << "\n\n";
        for (const auto& [name, text, is_code] : details(kind))
            out << "- " << name << ": " << (is_code ? "`" + text + "`" : text) << '\n';
        out << '\n';
    }
}

/// The headings of the page, with what leads to them.
constexpr struct {
    const char *about, *heading, *where;
} parts[] = {
    {"fault", "Faults", "What the library refuses while it reads the flags."},
    {"rule", "Rules",
     "What the library refuses because settings conflict with or require each other. "
     "[validation-rules.md](validation-rules.md) has "
     "the library's texts."},
    {"warning", "Warnings",
     "What the server accepts although it was probably not intended. With `--strict`, `check` fails on "
     "warnings. `--ignore ID` turns one kind off. Each value gets at most one warning about its text."},
    {"hazard", "Hazards",
     "What would let an attacker in: see [security.md](security.md). Open ones are warnings of `check`, and "
     "`check --security` has them all. The fix is the same line without the hazard."},
};

/// By groups, in which the kinds are together.
void write_findings(std::ostream& out) {
    out << "## Findings\n\nWhat `preflight` finds on a machine: see [preflight.md](preflight.md). A blocking "
           "finding would stop the server, or make a setting useless. An unknown finding means that "
           "preflight "
           "could not tell: the server does not count as ready.\n";
    const std::string_view none = "-";
    std::string_view group = none;
    for (const preflight::KindOfFinding& kind : preflight::kinds_of_findings()) {
        if (kind.group != group)
            out << (kind.group.empty() ? "\n### In every group"
                                       : "\n### In the group `" + std::string(kind.group) + "`")
                << "\n\n| Finding | Severity | Meaning |\n|---|---|---|\n";
        group = kind.group;
        out << "| `" << kind.id << "` | " << to_text(kind.severity) << " | " << kind.meaning << " |\n";
    }
}

void write_page_of_entries(const Entries& kinds, std::ostream& out) {
    out << "# What the tool finds, by id\n\n`orvane-config explain ID` prints one entry, and 'explain ids' "
           "all "
           "of "
           "them. The id is in brackets after a warning or a finding of `preflight`. JSON answers have all "
           "ids, "
           "and `--ids` prints them after faults and rules, too. An example is what follows `"
        << flag_with(Trait::required).flag << " DIRECTORY` in a command line.\n\n";
    for (const auto& part : parts) {
        out << "## " << part.heading << "\n\n" << part.where << "\n\n";
        Entries some;
        std::copy_if(kinds.begin(), kinds.end(), std::back_inserter(some),
                     [&](const Explanation& kind) { return kind.about == part.about; });
        write_entries_as_markdown(some, out);
    }
    write_findings(out);
}

} // namespace

void write(const Entries& kinds, std::string_view format, bool all, std::ostream& out) {
    const auto write_as = format != "markdown" ? write_entries_as_text
                          : all                ? write_page_of_entries
                                               : write_entries_as_markdown;
    write_as(kinds, out);
}

} // namespace orvane
