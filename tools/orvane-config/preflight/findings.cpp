// What preflight finds on this machine.
#include "preflight/findings.hpp"

#include "probing/occurrence_text.hpp"

#include <algorithm>

namespace orvane::preflight {
namespace {

struct Row {
    std::string_view group; ///< of a heading only
    KindOfFinding kind;
};

constexpr Row rows[] = {
#define ZEP_FINDINGS_OF(group) {group, {}},
#define ZEP_FINDING(name, id, severity, meaning) {{}, {{}, id, Severity::severity, meaning}},
#include "preflight/findings.def"
};

std::vector<KindOfFinding> read_rows() {
    std::vector<KindOfFinding> kinds;
    std::string_view group;
    for (const Row& row : rows) {
        if (row.kind.id.empty()) {
            group = row.group;
        } else {
            kinds.push_back(row.kind);
            kinds.back().group = group;
        }
    }
    return kinds;
}

} // namespace

std::string_view to_text(Severity severity) {
    constexpr std::string_view texts[] = {"blocking", "warning", "unknown", "ok"};
    return texts[static_cast<std::size_t>(severity)];
}

std::span<const KindOfFinding> kinds_of_findings() {
    static const std::vector<KindOfFinding> kinds = read_rows();
    return kinds;
}

const KindOfFinding& about(Kind kind) {
    return kinds_of_findings()[static_cast<std::size_t>(kind)];
}

bool is_in_the_way(const Finding& finding) {
    const Severity severity = about(finding.kind).severity;
    return severity == Severity::blocking || severity == Severity::unknown;
}

const Occurrence* occurrence_of(const Finding& finding, const Context& context) {
    // Where the last one counts, those before it are not among the effective ones.
    for (const CommandLine* line : {&context.effects.effective, &context.line}) {
        std::vector<const Occurrence*> given;
        for (const Occurrence& one : *line)
            if (one[0].text == finding.flag) given.push_back(&one);
        if (!given.empty()) return given[std::min(finding.position, given.size() - 1)];
    }
    return nullptr;
}

std::string as_given(const Occurrence& occurrence, const Context& context, bool hides_value) {
    const Occurrence shown_part(occurrence.begin(), hides_value ? occurrence.begin() + 1 : occurrence.end());
    return shown(shown_part) + " (" + numbers_of(occurrence) +
           at_place(context.places, occurrence.front().number) + ")";
}

std::vector<Finding> consistent(const std::vector<Finding>& findings) {
    std::vector<Finding> kept;
    for (const Finding& one : findings) {
        const auto about_the_same = [&](const Finding& other) {
            return one.flag == other.flag && one.position == other.position;
        };
        const auto repeats = [&](const Finding& other) {
            return about_the_same(other) && one.kind == other.kind && one.what == other.what;
        };
        const auto denies = [&](const Finding& other) {
            return about_the_same(other) && is_in_the_way(other);
        };
        const bool is_ok = about(one.kind).severity == Severity::ok && !one.flag.empty();
        if (std::ranges::none_of(kept, repeats) && !(is_ok && std::ranges::any_of(findings, denies)))
            kept.push_back(one);
    }
    return kept;
}

void Findings::add(Finding finding) {
    const std::scoped_lock lock(mutex_);
    findings_.push_back(std::move(finding));
}

std::vector<Finding> Findings::so_far() const {
    const std::scoped_lock lock(mutex_);
    return findings_;
}

} // namespace orvane::preflight
