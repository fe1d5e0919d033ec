// The verb `flags`: the reference of all flags, as text, Markdown, or a manual page.
#include "printing/wrapping.hpp"
#include "reference/reference.hpp"
#include "verbs/call.hpp"
#include "verbs/help.hpp"

#include <algorithm>
#include <iterator>
#include <ostream>
#include <utility>

namespace orvane {
namespace {

/// The names from other servers, without the values that their flags take.
std::string other_names(const Reference& one) {
    std::string names;
    for (std::string_view left = one.synonyms; !left.empty();) {
        const std::string_view entry = left.substr(0, left.find(' '));
        names.append(names.empty() ? "" : ", ").append(entry.substr(0, entry.find_first_of("=>")));
        left.remove_prefix(std::min(entry.size() + 1, left.size()));
    }
    return names;
}

/// The rows below a flag's heading: what it is called, and the text.
std::vector<std::pair<std::string, std::string>> details(const Reference& one) {
    std::vector<std::pair<std::string, std::string>> rows = {{"Repeated", one.repeated()}};
    if (!one.raw_relations.empty()) rows.emplace_back("Relations", one.relations());
    if (!one.synonyms.empty()) rows.emplace_back("Elsewhere", other_names(one));
    rows.emplace_back("Example", one.example());
    return rows;
}

/// What stands for a value in more than one flag.
constexpr const char* forms[][2] = {
    {"<number>", "a whole number, at most 4294967295"},
    {"<port>", "a whole number, at most 65535"},
    {"<size>", "bytes, as a whole number, or with a unit: K, M, G, T, P or E, alone or followed by B or iB, "
               "upper or lower case; each is 1024 times the one before"},
    {"<duration>",
     "hours:minutes:seconds or hours:minutes, minutes and seconds with two digits, with a fraction where "
     "needed: 0:01:30.5; a number alone means hours"},
    {"<command>", "a program and its arguments, in one token"},
};

std::string heading(const Reference& one) {
    return std::string(one.flag) + (one.value.empty() ? "" : " ") + std::string(one.value);
}

void write_text(const Reference& one, bool new_subject, std::ostream& out) {
    if (new_subject) out << one.subject << "\n\n";
    out << wrapped(heading(one), 2, 4) << '\n' << wrapped(one.meaning(), 6) << '\n';
    for (const auto& [name, text] : details(one))
        out << wrapped(std::string(name).append(": ").append(text), 6, 2, name == "Example" ? " \\" : "")
            << '\n';
    out << '\n';
}

void write_forms_as_text(std::ostream& out) {
    out << "Values\n\n";
    for (const auto& [form, text] : forms)
        out << "  " << form << '\n' << wrapped(text, 6) << "\n\n";
}

void write_markdown(const Reference& one, bool new_subject, std::ostream& out) {
    if (new_subject) out << "## " << one.subject << "\n\n";
    out << "### `" << heading(one) << "`\n\n" << one.meaning() << "\n\n";
    for (const auto& [name, text] : details(one))
        out << "- " << name << ": " << (name == "Example" ? "`" + text + "`" : text) << '\n';
    out << '\n';
}

void write_forms_as_markdown(std::ostream& out) {
    out << "## Values\n\n";
    for (const auto& [form, text] : forms)
        out << "- `" << form << "`: " << text << '\n';
}

void write_man(const Reference& one, bool new_subject, std::ostream& out) {
    if (new_subject) out << ".SS " << one.subject << '\n';
    out << ".TP\n.BI " << roff(std::string(one.flag))
        << (one.value.empty() ? "" : " \" " + roff(std::string(one.value)) + "\"") << '\n'
        << roff(one.meaning()) << '\n';
    for (const auto& [name, text] : details(one))
        out << ".br\n" << name << ": " << roff(text) << '\n';
}

void write_forms_as_man(std::ostream& out) {
    out << ".SS Values\n";
    for (const auto& [form, text] : forms)
        out << ".TP\n.B " << roff(form) << '\n' << roff(text) << '\n';
}

struct Format {
    const char* name;
    std::string before;
    void (*write)(const Reference&, bool new_subject, std::ostream&);
    void (*write_forms)(std::ostream&);
};

} // namespace

ExitCode flags(const Call& call) {
    const std::string wanted = call.value(own("format"), "text");
    const Format formats[] = {
        {"text", "", write_text, write_forms_as_text},
        {"markdown", "# The flags of the server\n\n", write_markdown, write_forms_as_markdown},
        {"man", manual_head(), write_man, write_forms_as_man}};
    const auto format = std::find_if(std::begin(formats), std::end(formats),
                                     [&](const Format& one) { return one.name == wanted; });
    call.out << format->before;
    std::string_view subject;
    for (const Reference& one : references()) {
        format->write(one, one.subject != subject, call.out);
        subject = one.subject;
    }
    format->write_forms(call.out);
    return ExitCode::done;
}

} // namespace orvane
