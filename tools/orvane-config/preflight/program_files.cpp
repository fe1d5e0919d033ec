// The files of programs that the server starts.
#include "preflight/program_files.hpp"

#include "preflight/command_line.hpp"
#include "system/entry.hpp"
#include "system/program_start.hpp"
#include "text/quoting.hpp"

#include "qel/i18n/convert.hpp"
#include "qel/util/canonicalize.hpp"

namespace orvane::preflight {
namespace {

/// Linux follows no more of them.
constexpr unsigned most_scripts = 5;

std::string name_of(const Path& file) {
    return shown(qel::util::filesystem::canonicalize(file).text());
}

bool can_be_run(const Path& file) {
    const Entry place = entry_at(file);
    return place.state == Entry::State::file && place.execute;
}

Obstacle missing_interpreter(const Path& script, const std::u16string& program, const std::string& where) {
    return {Kind::missing_interpreter,
            name_of(script) + " is a script for " + shown(program) + ", which " + where,
            program.ends_with(u'\r') ? "Its lines end as on Windows: remove the carriage returns."
                                     : "Install that program, or correct the first line of the script."};
}

/// What `env` would start, which it looks up as the server looks up programs.
std::optional<Obstacle> obstacle_after_env(const Path& script, const std::string& argument,
                                           const ProgramSearch& search, unsigned scripts) {
    if (argument.empty())
        return Obstacle{Kind::missing_interpreter,
                        name_of(script) + " is a script for env, which is given no program",
                        "Name the program in the first line, for example #!/usr/bin/env python3."};
    const auto& [program, lacks_split] = words_of_env(qel::i18n::utf8_to_ustring(argument));
    if (lacks_split)
        return Obstacle{Kind::missing_interpreter,
                        name_of(script) + " is a script for env, which takes '" + argument +
                            "' for one option",
                        "Write -S before it: #!/usr/bin/env -S " + argument};
    if (program.empty()) return std::nullopt;
    const auto file = names_a_place(program) ? with_ending(Path(program), search) : in_path(program, search);
    if (!file || !can_be_run(*file))
        return missing_interpreter(script, program,
                                   names_a_place(program) ? "cannot be run" : "env does not find in PATH");
    return obstacle_to_running(*file, search, scripts + 1);
}

std::optional<Obstacle> obstacle_in_script(const Path& script, const ProgramStart& start,
                                           const ProgramSearch& search, unsigned scripts) {
    const std::u16string interpreter = qel::i18n::utf8_to_ustring(start.interpreter);
    if (interpreter.empty())
        return Obstacle{Kind::missing_interpreter, name_of(script) + " names no interpreter after #!",
                        "Name one in the first line, for example #!/bin/sh."};
    if (scripts == most_scripts)
        return Obstacle{Kind::missing_interpreter, name_of(script) + " is a script for a script, and so on",
                        "Name a program in the first line, not a script."};
    // A relative one is looked up in the current directory, not in PATH.
    const Path program(interpreter);
    if (!can_be_run(program)) return missing_interpreter(script, interpreter, "cannot be run");
    if (auto obstacle = obstacle_to_running(program, search, scripts + 1)) return obstacle;
    if (interpreter != u"env" && !interpreter.ends_with(u"/env")) return std::nullopt;
    return obstacle_after_env(script, start.argument, search, scripts);
}

} // namespace

std::optional<Path> with_ending(const Path& place, const ProgramSearch& search) {
    for (const std::u16string& ending : search.endings)
        if (const Path file(place.text() + ending); entry_at(file).state == Entry::State::file) return file;
    return std::nullopt;
}

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

std::optional<Obstacle> obstacle_to_running(const Path& file, const ProgramSearch& search, unsigned scripts) {
    const Entry there = entry_at(file);
    const std::string name = name_of(file);
    if (!there.rights_known)
        return Obstacle{Kind::cannot_tell, "the access-control list of " + name + " cannot be read",
                        "Run preflight as the owner of the file, or as an administrator."};
    if (there.no_programs)
        return Obstacle{Kind::not_executable,
                        "the file system of " + name +
                            " is mounted so that nothing on it can be executed (noexec)",
                        "Move the program to another file system."};
    if (!can_be_run(file))
        return Obstacle{Kind::not_executable, "user " + user_name() + " may not execute " + name,
                        "Give user " + user_name() +
                            " this right: " + command_to_grant(Right::execute, file, there.own)};
    const ProgramStart start = start_of(file);
    if (start.kind == ProgramStart::Kind::script) return obstacle_in_script(file, start, search, scripts);
    if (start.kind == ProgramStart::Kind::not_run)
        return Obstacle{Kind::not_executable, name + " " + start.what, start.advice};
    if (start.kind == ProgramStart::Kind::unclear)
        return Obstacle{Kind::cannot_tell,
                        name + " " + start.what + "; but this system runs more formats than usual",
                        "Start the program by hand to see whether it runs."};
    return std::nullopt;
}

} // namespace orvane::preflight
