// Everything that the tool finds wrong, by kinds.
#include "explaining/kinds.hpp"

#include "explaining/hazards.hpp"
#include "explaining/warnings.hpp"
#include "preflight/findings.hpp"
#include "reference/reference.hpp"

#include "qel/config/error_code.hpp"
#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

namespace error_code = qel::config::error_code;

constexpr ExplainedKind faults[] = {
#define ZEP_FAULT(id, code, ...) {id, __VA_ARGS__},
#define ZEP_RULE(...)
#include "explaining/faults.def"
};

constexpr ExplainedKind broken_rules[] = {
#define ZEP_FAULT(...)
#define ZEP_RULE(id, text, ...) {id, __VA_ARGS__},
#include "explaining/faults.def"
};

constexpr std::string_view missing_value_id = "missing-value";

constexpr std::string_view ids_by_form[] = {
#define ZEP_FORM(form, conversion, reader, fault, ...) fault,
#define ZEP_FOREIGN_FORM(...)
#include "reference/forms.def"
};

constexpr bool has_row(std::string_view id) {
    return std::ranges::find(faults, id, &ExplainedKind::id) != std::end(faults);
}
static_assert(std::ranges::all_of(ids_by_form, has_row) && has_row(missing_value_id),
              "forms.def has a fault that faults.def lacks");

/// Of a value that the library cannot read.
std::string_view id_of_value(const Occurrence& occurrence) {
    const Reference* const flag = occurrence.empty() ? nullptr : reference_of(occurrence[0].text);
    if (flag != nullptr && !flag->is_switch() && occurrence.size() == 1) return missing_value_id;
    return ids_by_form[place_of(flag == nullptr ? Form::none : flag->form)];
}

Explanation kind_of(std::string_view about, const ExplainedKind& row) {
    return {about,
            std::string(row.id),
            std::string(row.summary),
            with_flags(row.explanation),
            example_of(row.example),
            example_of(row.fix)};
}

std::vector<Explanation> make_kinds() {
    std::vector<Explanation> kinds;
    for (const ExplainedKind& row : faults)
        kinds.push_back(kind_of("fault", row));
    for (const ExplainedKind& row : broken_rules)
        kinds.push_back(kind_of("rule", row));
    for (const ExplainedKind& row : warning_kinds())
        kinds.push_back(kind_of("warning", row));
    for (const Hazard& hazard : all_hazards())
        kinds.push_back(kind_of("hazard", hazard.kind));
    const auto warnings = warning_kinds();
    for (const auto& row : preflight::kinds_of_findings()) {
        // Where preflight finds what check warns of, the id is the same.
        const auto warned = [&](const ExplainedKind& warning) { return warning.id == row.id; };
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
    if (fault.code == error_code::parse_error()) return id_of_value(fault.occurrence);
#define ZEP_FAULT(id, its_code, ...)                                                                         \
    if (fault.code == error_code::its_code()) return id;
#define ZEP_RULE(...)
#include "explaining/faults.def"
    return {};
}

std::string_view id_of(const std::u16string& problem) {
    const std::string text = qel::i18n::ustring_to_utf8(problem);
#define ZEP_FAULT(...)
#define ZEP_RULE(id, part, ...)                                                                              \
    if (text.find(with_flags(part)) != text.npos) return id;
#include "explaining/faults.def"
    return {};
}

} // namespace orvane
