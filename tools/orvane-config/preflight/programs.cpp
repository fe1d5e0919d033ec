// The programs that the server starts.
#include "preflight/command_line.hpp"
#include "preflight/groups.hpp"
#include "reference/flag_texts.hpp"
#include "system/entry.hpp"
#include "system/program_search.hpp"

#include "text/quoting.hpp"

#include "qel/i18n/convert.hpp"
#include "qel/util/canonicalize.hpp"
#include "qel/util/native_path.hpp"

#include <array>
#include <fstream>
#include <optional>

namespace orvane::preflight {
namespace {

using qel::util::filesystem::Path;

/// Longer ones are not run by any system.
constexpr std::size_t longest_interpreter = 256;

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

/// The file at this place, with one of the endings that a name may lack; the first that there is.
std::optional<Path> with_ending(const Path& place, const ProgramSearch& search) {
    for (const std::u16string& ending : search.endings)
        if (const Path file(place.text() + ending); entry_at(file).state == Entry::State::file) return file;
    return std::nullopt;
}

bool can_be_run(const Path& file) {
    const Entry place = entry_at(file);
    return place.state == Entry::State::file && place.execute;
}

/// The first in PATH that can be run; else the first that is there.
std::optional<Path> in_path(const std::u16string& name, const ProgramSearch& search) {
    using qel::i18n::operator/;
    std::optional<Path> found;
    for (const Path& directory : search.directories) {
        auto file = with_ending(directory / name, search);
        if (file && can_be_run(*file)) return file;
        if (!found) found = file;
    }
    return found;
}

/// The program that the first line of a script names; empty: it is no script, or may be run and not read.
std::u16string interpreter_of(const Path& file) {
    std::array<char, longest_interpreter> head{};
    std::ifstream in(qel::util::filesystem::native(file), std::ios_base::binary);
    in.read(head.data(), head.size());
    std::string line(head.data(), static_cast<std::size_t>(in.gcount()));
    if (!line.starts_with("#!")) return {};
    line = line.substr(2, line.find('\n') - 2);
    line.erase(0, line.find_first_not_of(" \t"));
    return qel::i18n::utf8_to_ustring(line.substr(0, line.find_first_of(" \t")));
}

void look_at_file(const Program& program, const Path& file) {
    const std::string name = shown(qel::util::filesystem::canonicalize(file).text());
    if (!entry_at(file).rights_known)
        return program.add(Kind::cannot_tell, "the access-control list of " + name + " cannot be read",
                           "Run preflight as the owner of the file, or as an administrator.");
    if (!can_be_run(file))
        return program.add(Kind::not_executable, "user " + user_name() + " may not execute " + name,
                           "Give user " + user_name() +
                               " this right: " + command_to_grant(Right::execute, file, entry_at(file).own));
    const std::u16string interpreter = interpreter_of(file);
    if (interpreter.starts_with(u'/') && !can_be_run(Path(interpreter)))
        return program.add(Kind::missing_interpreter,
                           name + " is a script for " + shown(interpreter) + ", which cannot be run",
                           interpreter.ends_with(u'\r')
                               ? "Its lines end as on Windows: remove the carriage returns."
                               : "Install that program, or correct the first line of the script.");
    program.add(Kind::usable_program, name + " can be executed");
}

void look_at_program(const Program& program, const ProgramSearch& search) {
    const CommandWords words = words_of(program.command);
    if (!words.shell_syntax.empty())
        program.add(Kind::shell_syntax,
                    "no shell reads this command, so " + shown(words.shell_syntax) + " is not interpreted",
                    "Put the command into a script, or start a shell: sh -c '...'");
    const std::u16string& name = words.program;
    if (name.empty()) return program.add(Kind::missing_program, "the command is empty", "Name a program.");
    if (!names_a_place(name)) {
        if (const auto file = in_path(name, search)) return look_at_file(program, *file);
        return program.add(
            Kind::missing_program, "there is no program " + shown(name) + " in PATH",
            "Install it, or write its full path. The server may have another PATH than this shell.");
    }
    const Path place(name);
    const std::string absolute = shown(qel::util::filesystem::canonicalize(place).text());
    if (!qel::util::filesystem::native(place).is_absolute())
        program.add(Kind::relative_program, "this means " + absolute + " now",
                    "Write the full path: the server may be started elsewhere.");
    if (const auto file = with_ending(place, search)) return look_at_file(program, *file);
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
