// Several files that are several configurations.
#include "verbs/configurations.hpp"

#include "formats/content.hpp"
#include "printing/json.hpp"
#include "text/lists.hpp"
#include "verbs/input.hpp"
#include "verbs/listed.hpp"

#include <algorithm>
#include <ostream>
#include <sstream>
#include <utility>

namespace orvane {
namespace {

/// From the best to the worst.
constexpr ExitCode ranks[] = {ExitCode::done, ExitCode::warned, ExitCode::absent, ExitCode::negative,
                              ExitCode::failed_io};

std::vector<std::string> files_of(const Call& call) {
    std::vector<std::string> files;
    for (const std::string& name : call.files) {
        const auto more = is_directory(name) ? files_in(name, shown_name(call, name)) : std::vector{name};
        files.insert(files.end(), more.begin(), more.end());
    }
    return files;
}

constexpr const char* not_read = "cannot be read";

struct Said {
    ExitCode code{};
    std::string answer{}, details{};
    std::string brief{};
    std::vector<Case> cases{};
};

Said said_about(const std::string& file, const Call& call, verb::Run& verb) {
    std::ostringstream out, err;
    Call one{call.verb, out, err, call.options, call.ended, {file}, call.words};
    one.redactor = call.redactor;
    Said said;
    try {
        said.code = verb(one);
        said.brief = one.brief;
        said.cases = one.cases;
        said.details = err.str();
    } catch (const Misused&) {
        throw;
    } catch (const std::runtime_error& failure) {
        said = {ExitCode::failed_io,
                "",
                failure.what(),
                not_read,
                {unread(shown_name(call, file), failure.what())}};
    }
    call.redactor = one.redactor;
    said.answer = out.str();
    return said;
}

/// What stands below the line of a file.
std::string details_of(const Call& call, const std::string& name, const Said& said) {
    if (said.brief == not_read) return "\norvane-config: " + said.details + '\n';
    const bool asked = call.has(own("all")) || call.has(own("changed")) || call.has(own("security"));
    const std::string text = said.details + (asked ? said.answer : "");
    return text.empty() ? "" : '\n' + name + ":\n" + text;
}

} // namespace

bool is_one_configuration(const Call& call) {
    return call.files.empty() || (call.files.size() == 1 && !is_directory(call.files[0]));
}

ExitCode check_each(const Call& call, verb::Run& verb) {
    const ExitCode* worst = std::begin(ranks);
    std::string lines, details;
    std::vector<CheckedFile> answers;
    std::vector<Case> cases;
    for (const std::string& file : files_of(call)) {
        const Said said = said_about(file, call, verb);
        worst = std::max(worst, std::ranges::find(ranks, said.code));
        const std::string name = shown_name(call, file);
        lines += name + ": " + said.brief + '\n';
        details += details_of(call, name, said);
        cases.insert(cases.end(), said.cases.begin(), said.cases.end());
        if (!said.answer.empty() || said.brief == not_read)
            answers.push_back({name, said.answer, said.details});
    }
    if (call.has(own("get"))) {
        for (const CheckedFile& one : answers)
            for (const std::string_view value : split(one.answer, "\n"))
                call.out << one.name << ": " << value << '\n';
        call.err << details;
    } else if (call.wants_json())
        call.out << checks_json(answers) << '\n';
    else if (call.wants_list())
        list(call, std::move(cases));
    else if (call.has(own("quiet")))
        call.err << details;
    else
        call.out << lines << details;
    return *worst;
}

} // namespace orvane
