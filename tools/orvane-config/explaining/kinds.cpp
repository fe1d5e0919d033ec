// Everything that the tool finds wrong, by kinds.
#include "explaining/kinds.hpp"

#include "explaining/warnings.hpp"
#include "preflight/findings.hpp"
#include "reference/reference.hpp"

#include "qel/config/error_code.hpp"
#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

namespace error_code = qel::config::error_code;

struct FaultKind {
    std::string_view id;
    const boost::system::error_code& (*code)() noexcept;
    std::string_view form, summary, explanation, example, fix;
};

// Not constexpr: on Windows the address of an imported function is not a constant.
const FaultKind fault_kinds[] = {
#define ZEP_FAULT(id, code, ...) {id, error_code::code, __VA_ARGS__},
#define ZEP_RULE(...)
#include "explaining/faults.def"
};

struct RuleKind {
    std::string_view id, text, summary, explanation, example, fix;
};

constexpr RuleKind rule_kinds[] = {
#define ZEP_FAULT(...)
#define ZEP_RULE(...) {__VA_ARGS__},
#include "explaining/faults.def"
};

/// Whether the row of that form is about the refused flag.
bool is_about(std::string_view form, const Occurrence& occurrence) {
    if (form.empty()) return true;
    const Reference* const flag = occurrence.empty() ? nullptr : reference_of(occurrence[0].text);
    if (form == "?") return occurrence.size() == 1 && flag != nullptr && !flag->is_switch();
    if (flag == nullptr) return false;
    return form == "|" ? !keywords(*flag).empty() : flag->value.starts_with(form);
}

template <class Row>
Explanation kind_of(std::string_view about, const Row& row) {
    return {about,
            std::string(row.id),
            std::string(row.summary),
            with_flags(row.explanation),
            with_flags(row.example),
            with_flags(row.fix)};
}

std::vector<Explanation> make_kinds() {
    std::vector<Explanation> kinds;
    for (const FaultKind& row : fault_kinds)
        kinds.push_back(kind_of("fault", row));
    for (const RuleKind& row : rule_kinds)
        kinds.push_back(kind_of("rule", row));
    for (const WarningKind& row : warning_kinds())
        kinds.push_back(kind_of("warning", row));
    const auto warnings = warning_kinds();
    for (const auto& row : preflight::kinds_of_findings()) {
        // Where preflight finds what check warns of, the id is the same.
        const auto warned = [&](const WarningKind& warning) { return warning.id == row.id; };
        if (std::any_of(warnings.begin(), warnings.end(), warned)) continue;
        kinds.push_back({"finding", std::string(row.id), std::string(row.meaning)});
    }
    return kinds;
}

} // namespace

const std::vector<Explanation>& all_kinds() {
    static const std::vector<Explanation> kinds = make_kinds();
    return kinds;
}

std::string_view id_of(const Fault& fault) {
    for (const FaultKind& row : fault_kinds)
        if (row.code() == fault.code && is_about(row.form, fault.occurrence)) return row.id;
    return {};
}

std::string_view id_of(const std::u16string& problem) {
    const std::string text = qel::i18n::ustring_to_utf8(problem);
    for (const RuleKind& row : rule_kinds)
        if (text.find(with_flags(row.text)) != text.npos) return row.id;
    return {};
}

} // namespace orvane
