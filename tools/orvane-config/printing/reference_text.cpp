// The reference of the flags for people.
#include "printing/reference_text.hpp"

#include "printing/roff.hpp"
#include "printing/wrapping.hpp"
#include "probing/settings_of_flag.hpp"
#include "text/lists.hpp"
#include "text/quoting.hpp"

#include <algorithm>
#include <ostream>
#include <utility>

namespace orvane {
namespace {

/// The names from other servers, without the values that their flags take.
std::string other_names(const Reference& one) {
    return joined(synonyms_of(one), ", ", &Synonym::name);
}

/// The rows below a flag's heading: what it is called, and the text.
std::vector<std::pair<std::string, std::string>> details(const Reference& one) {
    std::vector<std::pair<std::string, std::string>> rows = {{"Sets", joined(settings_of_flag(one))},
                                                             {"Repeated", one.repeated()}};
    if (!one.raw_relations.empty()) rows.emplace_back("Relations", one.relations());
    if (!one.synonyms.empty()) rows.emplace_back("In other servers", other_names(one));
    rows.emplace_back("Example", one.example());
    return rows;
}

/// Calls `write` with what stands for a value in several flags, and what it means.
template <class Write>
void each_form(const Forms& shown, const Write& write) {
    for (const FormRow* const form : shown)
        write(form->written, std::string(form->text) + (form->largest.empty() ? "" : ", at most ") +
                                 std::string(form->largest));
}

/// Those whose text says more than the flag's own. A reader of one flag knows what a path is.
Forms forms_of(const std::vector<const Reference*>& flags, bool whole) {
    Forms shown;
    for (const FormRow& form : forms) {
        const auto is_used = [&](const Reference* flag) {
            return &row_of(flag->form) == &form && form.holds != Holds::path;
        };
        if (!form.text.empty() && (whole || std::ranges::any_of(flags, is_used))) shown.push_back(&form);
    }
    return shown;
}

std::string heading(const Reference& one) {
    return std::string(one.flag) + (one.value.empty() ? "" : " ") + std::string(one.value);
}

void write_text(const Reference& one, bool new_subject, std::ostream& out) {
    if (new_subject) out << one.subject << "\n\n";
    out << wrapped(heading(one), 2, 4) << '\n' << wrapped(one.meaning(), 6) << '\n';
    for (const auto& [name, text] : details(one))
        out << wrapped(std::string(name).append(": ").append(text), 6, 2,
                       name == "Example" ? continuation() : "")
            << '\n';
    out << '\n';
}

void write_forms_as_text(const Forms& shown, std::ostream& out) {
    if (!shown.empty()) out << "Values\n\n";
    each_form(shown, [&](std::string_view form, const std::string& text) {
        out << "  " << form << '\n' << wrapped(text, 6) << "\n\n";
    });
}

void write_markdown(const Reference& one, bool new_subject, std::ostream& out) {
    if (new_subject) out << "## " << one.subject << "\n\n";
    out << "### `" << heading(one) << "`\n\n" << one.meaning() << "\n\n";
    for (const auto& [name, text] : details(one))
        out << "- " << name << ": " << (name == "Example" ? "`" + text + "`" : text) << '\n';
    out << '\n';
}

void write_forms_as_markdown(const Forms& shown, std::ostream& out) {
    if (!shown.empty()) out << "## Values\n\n";
    each_form(shown, [&](std::string_view form, const std::string& text) {
        out << "- `" << form << "`: " << text << '\n';
    });
}

void write_man(const Reference& one, bool new_subject, std::ostream& out) {
    if (new_subject) out << ".SH " << roff_title(one.subject) << '\n';
    out << ".TP\n.BI " << roff(one.flag) << (one.value.empty() ? "" : " \" " + roff(one.value) + "\"") << '\n'
        << roff(one.meaning()) << '\n';
    for (const auto& [name, text] : details(one))
        out << ".br\n" << name << ": " << roff(text) << '\n';
}

void write_forms_as_man(const Forms& shown, std::ostream& out) {
    out << ".SH VALUES\n";
    each_form(shown, [&](std::string_view form, const std::string& text) {
        out << ".TP\n.B " << roff(form) << '\n' << roff(text) << '\n';
    });
}

constexpr ReferenceFormat formats[] = {
    {"text", "", write_text, write_forms_as_text},
    {"markdown", "# The flags of the server\n\n", write_markdown, write_forms_as_markdown},
    {"man", "", write_man, write_forms_as_man},
};

} // namespace

const ReferenceFormat& reference_format(std::string_view name) {
    return *std::ranges::find(formats, name, &ReferenceFormat::name);
}

void write(const std::vector<const Reference*>& flags, const ReferenceFormat& format, bool whole,
           std::ostream& out) {
    if (whole) out << format.before;
    std::string_view subject;
    for (const Reference* const one : flags) {
        format.write(*one, whole && one->subject != subject, out);
        subject = one->subject;
    }
    format.write_forms(forms_of(flags, whole), out);
}

std::vector<const Reference*> all_flags() {
    std::vector<const Reference*> flags;
    for (const Reference& one : references())
        flags.push_back(&one);
    return flags;
}

} // namespace orvane
