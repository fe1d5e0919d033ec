// The format systemd, read: a unit as it is deployed.
#include "formats/content.hpp"
#include "formats/format_table.hpp"
#include "formats/source_files.hpp"
#include "formats/unit_file.hpp"
#include "formats/unit_name.hpp"
#include "text/lists.hpp"

#include <algorithm>
#include <optional>

namespace orvane {
namespace {

class Unit {
public:
    Unit(const LocatedText& text, SourceFiles& files)
        : files_(files), unit_(name_of_unit(files)), settings_(service_settings(text)) {
        if (const std::string_view* const system = system_directory(unit_))
            files.root = unit_.directory.substr(0, unit_.directory.size() - system->size());
        if (unit_.is_known())
            for (const auto& [name, path] : drop_ins_of(unit_, files))
                add(service_settings(files.open(path)));
    }

    ReadTokens command() {
        std::vector<UnitWord> words = unit_words(exec_start());
        const std::string marks = marks_of(words.front().text);
        ReadTokens tokens;
        for (std::size_t i = 0; i != words.size(); ++i) {
            // The second word is then what the program is told it is called.
            if (i == 1 && marks.find('@') != marks.npos) continue;
            // Where the program is does not matter.
            const LocatedText word = i == 0 ? words[i].text : specified(words[i].text);
            if (i == 0 || marks.find(':') != marks.npos)
                tokens.push_back({word.bytes, words[i].begin});
            else
                add_with_variables(tokens, word, words[i].begin);
        }
        return tokens;
    }

private:
    void add(std::vector<UnitSetting> more) { std::ranges::move(more, std::back_inserter(settings_)); }

    /// All that a setting is set to since it was last set to nothing.
    std::vector<LocatedText> values_of(std::string_view name) const {
        std::vector<LocatedText> values;
        for (const UnitSetting& setting : settings_) {
            if (setting.name != name) continue;
            if (setting.value.bytes.empty())
                values.clear();
            else
                values.push_back(setting.value);
        }
        return values;
    }

    LocatedText exec_start() const {
        const std::vector<LocatedText> commands = values_of("ExecStart");
        if (commands.empty())
            throw NotUnderstood({1, 1}, "there is no ExecStart= in [Service]; give a file with only the "
                                        "command that starts the server");
        if (commands.size() > 1)
            throw NotUnderstood(commands[1].spots[0], "a second ExecStart=; only one command is read");
        return commands.front();
    }

    /// Takes the marks before the program off it.
    static std::string marks_of(LocatedText& program) {
        const std::size_t size =
            std::min(program.bytes.find_first_not_of(marks_before_program), program.bytes.size());
        std::string marks = program.bytes.substr(0, size);
        program = part(program, size, program.bytes.size());
        return marks;
    }

    /// What a letter after % stands for, where that is certain.
    std::optional<std::string> meaning_of(char letter) const {
        if (letter == '%') return "%";
        if (!unit_.is_known()) return {};
        const std::string instance = unit_.instance();
        switch (letter) {
        case 'n':
            return unit_.file;
        case 'N':
            return unit_.stem();
        case 'p':
            return unit_.prefix();
        case 'I': // with what systemd escapes
            if (instance.find_first_of("-\\") != instance.npos) return {};
            [[fallthrough]];
        case 'i':
            return instance.empty() ? std::nullopt : std::optional(instance);
        case 'H':
            return host();
        default:
            return directory_of(letter);
        }
    }

    /// Only a unit that is installed here is for this machine.
    std::optional<std::string> host() const {
        if (system_directory(unit_) == nullptr || !files_.root.empty()) return {};
        const std::string name = bytes_of("/proc/sys/kernel/hostname", "the name of the host");
        return name.substr(0, name.find('\n'));
    }

    std::optional<std::string> directory_of(char letter) const {
        constexpr struct {
            char letter;
            const char* directory;
        } directories[] = {
            {'t', "/run"}, {'E', "/etc"}, {'S', "/var/lib"}, {'C', "/var/cache"}, {'L', "/var/log"}};
        for (const auto& one : directories)
            if (one.letter == letter && !unit_.is_of_user()) return one.directory;
        return {};
    }

    LocatedText specified(const LocatedText& word) const {
        LocatedText result;
        for (Walk walk(word); !walk.done();) {
            const Walk begin = walk;
            const char c = walk.next();
            if (c != '%') {
                result.append(c, begin.spot());
                continue;
            }
            const auto meaning = meaning_of(walk.peek());
            if (!meaning) begin.refuse("systemd would replace this; write the value, or %% for a %");
            walk.next();
            for (const char byte : *meaning)
                result.append(byte, begin.spot());
        }
        return result;
    }

    void add_with_variables(ReadTokens& tokens, const LocatedText& word, Spot begin) {
        const std::string_view text = word.bytes;
        if (text.size() > 1 && text[0] == '$' && text[1] != '{' && text[1] != '$') {
            const Walk walk(word);
            const LocatedText value = value_of(text.substr(1), walk);
            if (value.bytes.find('\\') != value.bytes.npos)
                throw NotUnderstood(value.spots[0],
                                    "what systemd makes of a \\ in this value is not certain");
            for (const UnitWord& one : unit_words(value))
                tokens.push_back({one.text.bytes, one.begin});
            return;
        }
        tokens.push_back({with_variables(word), begin});
    }

    std::string with_variables(const LocatedText& word) {
        std::string text;
        for (Walk walk(word); !walk.done();) {
            const Walk begin = walk;
            if (walk.skip("$$")) {
                text += '$';
            } else if (walk.skip("${")) {
                std::string name;
                while (!walk.done() && walk.peek() != '}')
                    name += walk.next();
                if (!walk.skip("}")) begin.refuse("this { is not closed");
                text += value_of(name, begin).bytes;
            } else if (walk.peek() == '$') {
                begin.refuse("systemd would replace this; write the value, or $$ for a $");
            } else {
                text += walk.next();
            }
        }
        return text;
    }

    LocatedText value_of(std::string_view name, const Walk& place) {
        if (!variables_) variables_ = variables();
        const auto found = std::find_if(variables_->rbegin(), variables_->rend(),
                                        [&](const Variable& one) { return one.name == name; });
        if (found == variables_->rend())
            place.refuse(
                "systemd would replace this, and the unit does not set it; give it with --env NAME=VALUE",
                "the unit does not set $" + std::string(name) + "; give it with --env " + std::string(name) +
                    "=VALUE");
        return found->value;
    }

    /// Those of files come last, and win.
    std::vector<Variable> variables() {
        std::vector<Variable> all;
        for (const LocatedText& value : values_of("Environment"))
            for (const UnitWord& word : unit_words(value)) {
                const LocatedText text = specified(word.text);
                const auto equals = std::min(text.bytes.find('='), text.bytes.size() - 1);
                all.push_back({text.bytes.substr(0, equals), part(text, equals + 1, text.bytes.size())});
            }
        for (const LocatedText& value : values_of("EnvironmentFile"))
            std::ranges::move(variables_of(environment_file(specified(value))), std::back_inserter(all));
        return all;
    }

    LocatedText environment_file(const LocatedText& value) {
        const bool may_be_absent = value.bytes.starts_with('-');
        const std::string path = value.bytes.substr(may_be_absent ? 1 : 0);
        if (files_.paths.empty() || !path.starts_with('/') || path.find_first_of("*?[") != path.npos)
            throw NotUnderstood(value.spots[0],
                                "systemd reads only the absolute path of one file for certain");
        if (may_be_absent && !is_there(files_.root + path)) return {};
        return files_.open(files_.root + path);
    }

    SourceFiles& files_;
    UnitName unit_;
    std::vector<UnitSetting> settings_;
    std::optional<std::vector<Variable>> variables_{};
};

} // namespace

ReadTokens read_unit(const LocatedText& unit, SourceFiles& files) {
    return Unit(unit, files).command();
}

ReadTokens read_systemd(const LocatedText& text) {
    SourceFiles none;
    return read_unit(text, none);
}

} // namespace orvane
