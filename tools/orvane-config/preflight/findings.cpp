// What preflight finds on this machine.
#include "preflight/findings.hpp"

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
    constexpr std::string_view texts[] = {"blocking", "warning", "unknown", "fine"};
    return texts[static_cast<std::size_t>(severity)];
}

std::span<const KindOfFinding> kinds_of_findings() {
    static const std::vector<KindOfFinding> kinds = read_rows();
    return kinds;
}

const KindOfFinding& about(Kind kind) {
    return kinds_of_findings()[static_cast<std::size_t>(kind)];
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

void Findings::add(Finding finding) {
    const std::scoped_lock lock(mutex_);
    findings_.push_back(std::move(finding));
}

std::vector<Finding> Findings::so_far() const {
    const std::scoped_lock lock(mutex_);
    return findings_;
}

} // namespace orvane::preflight
