// The programs that the server starts.
#include "preflight/command_line.hpp"
#include "preflight/groups.hpp"
#include "preflight/program_files.hpp"
#include "reference/flag_texts.hpp"
#include "system/entry.hpp"
#include "system/program_search.hpp"

#include "text/path_anchor.hpp"
#include "text/quoting.hpp"

#include "qel/i18n/convert.hpp"
#include "qel/util/canonicalize.hpp"

#include <string>
#include <utility>

namespace orvane::preflight {
namespace {

using qel::util::filesystem::Path;

/// One command of the server.
struct Program {
    std::u16string_view flag;
    std::size_t position;
    std::u16string command;
    Findings& findings;

    void add(Kind kind, std::string what, std::string advice = {}) const {
        findings.add(kind, flag, std::move(what), std::move(advice), position);
    }
};

void look_at_file(const Program& program, const Path& file, const ProgramSearch& search) {
    if (const auto obstacle = obstacle_to_running(file, search))
        return program.add(obstacle->kind, obstacle->what, obstacle->advice);
    program.add(Kind::usable_program,
                shown(qel::util::filesystem::canonicalize(file).text()) + " can be executed");
}

void look_at_program(const Program& program, const ProgramSearch& search) {
    const CommandWords words = words_of(program.command);
    if (!words.shell_syntax.empty())
        program.add(Kind::shell_syntax,
                    "no shell reads this command, so " + shown(words.shell_syntax) + " is not interpreted",
                    std::string("Put the command into a script, or start a shell: ") +
                        (backslash_separates() ? "cmd /c ..." : "sh -c '...'"));
    const std::u16string& name = words.program;
    if (name.empty()) return program.add(Kind::missing_program, "the command is empty", "Name a program.");
    if (!names_a_place(name)) {
        if (const auto file = in_path(name, search)) return look_at_file(program, *file, search);
        return program.add(
            Kind::missing_program, "there is no program " + shown(name) + " in PATH",
            "Install it, or write its full path. The server may have another PATH than this shell.");
    }
    const Path place(name);
    const std::string absolute = shown(qel::util::filesystem::canonicalize(place).text());
    if (anchor_of(name) != PathAnchor::full)
        program.add(Kind::relative_program, "this means " + absolute + " now",
                    "Write the full path: the server may be started elsewhere.");
    if (const auto file = with_ending(place, search)) return look_at_file(program, *file, search);
    if (const Entry there = entry_at(place); there.state == Entry::State::absent)
        program.add(Kind::missing_program, "there is no program " + absolute,
                    "Install it, or correct the path.");
    else
        program.add(Kind::not_executable,
                    absolute + (there.state == Entry::State::unreachable
                                    ? " cannot be reached by user " + user_name()
                                    : " is not a program"),
                    "Name a file that user " + user_name() + " may execute.");
}

} // namespace

void look_at_programs(const Context& context, Findings& findings) {
    const ProgramSearch search = program_search();
    if (const auto& driver = context.settings.driver())
        look_at_program({flag::driver, last_given, *driver, findings}, search);
    std::size_t position = 0;
    for (const auto& handler : context.settings.log_handler()) {
        if (!handler.command().empty())
            look_at_program(
                {flag::log_handler, position, qel::i18n::utf8_to_ustring(handler.command()), findings},
                search);
        ++position;
    }
}

} // namespace orvane::preflight
