// The verb `warnings`: what the kinds of warnings mean.
#include "explaining/warnings.hpp"
#include "printing/json.hpp"
#include "printing/roff.hpp"
#include "printing/wrapping.hpp"
#include "verbs/call.hpp"
#include "verbs/ignored_warnings.hpp"

#include "qel/i18n/convert.hpp"

#include <boost/json.hpp>

#include <algorithm>
#include <ostream>

namespace orvane {
namespace {

using qel::i18n::ustring_to_utf8;

void write_as_text(const WarningKind& kind, std::ostream& out) {
    out << wrapped(std::string(kind.id) + ": " + std::string(kind.summary), 0) << '\n'
        << wrapped(kind.explanation, 4) << "\n\n";
}

void write_as_markdown(const WarningKind& kind, std::ostream& out) {
    out << "## `" << kind.id << "`: " << kind.summary << "\n\n" << kind.explanation << "\n\n";
}

void write_as_man(const WarningKind& kind, std::ostream& out) {
    out << ".TP\n.B " << roff(kind.id) << '\n'
        << roff(kind.summary) << ". " << roff(kind.explanation) << '\n';
}

void write_as_json(std::span<const WarningKind> kinds, std::ostream& out) {
    boost::json::array warnings;
    for (const WarningKind& kind : kinds)
        warnings.push_back({{"id", kind.id}, {"summary", kind.summary}, {"explanation", kind.explanation}});
    out << boost::json::object{{"format", json_format}, {"warnings", std::move(warnings)}} << '\n';
}

/// Throws Misused when there is none.
const WarningKind& kind_of_warning(const std::string& id) {
    const auto kinds = warning_kinds();
    const auto found =
        std::find_if(kinds.begin(), kinds.end(), [&](const WarningKind& one) { return one.id == id; });
    if (found == kinds.end())
        throw Misused("there is no warning '" + id + "'; 'orvane-config warnings' lists them");
    return *found;
}

} // namespace

WarningIds ignored_warnings(const Call& call, const WarningIds& others) {
    const std::string list = call.value(own("ignore"));
    WarningIds ignored;
    for (const std::string_view id : split(list, ','))
        ignored.emplace(others.contains(id) ? id : kind_of_warning(std::string(id)).id);
    return ignored;
}

ExitCode warnings(const Call& call) {
    const std::string format = call.value(own("format"), "text");
    const auto write = format == "man"        ? write_as_man
                       : format == "markdown" ? write_as_markdown
                                              : write_as_text;
    const auto asked_for = call.words.empty()
                               ? warning_kinds()
                               : std::span(&kind_of_warning(ustring_to_utf8(call.words.front())), 1);
    if (format == "json") {
        write_as_json(asked_for, call.out);
        return ExitCode::done;
    }
    if (!call.words.empty()) {
        write(asked_for.front(), call.out);
        return ExitCode::done;
    }
    if (format == "markdown")
        call.out << "# Warnings\n\n`orvane-config check`, `show` and `fix` warn about lines that the server "
                    "accepts, but that were probably not intended. With `--strict`, `check` fails on "
                    "warnings; `--ignore ID` turns one kind off. Each value gets at most one warning about "
                    "its text.\n\n";
    if (format == "man") call.out << ".SH WARNINGS\n";
    for (const WarningKind& kind : warning_kinds())
        write(kind, call.out);
    return ExitCode::done;
}

} // namespace orvane
