// A call of this tool that a file contains, such as ExecStart=orvane-config exec --from FILE -- SERVER.
#include "verbs/contained_call.hpp"

#include "formats/source_files.hpp"

#include "qel/i18n/convert.hpp"

#include <ostream>
#include <stdexcept>

namespace orvane {
namespace {

class Contained {
public:
    Contained(const Call& outer, const ContainedCall& contained)
        : outer_(outer), contained_(contained), call_(read()) {
        call_.root = contained.files.root;
        call_.contained = contained.files.contained;
        call_.redactor = outer.redactor;
        if (outer.has(own("redact"))) call_.options.emplace_back(&own("redact"), "");
        for (std::string& file : call_.files)
            anchor(file);
        for (auto& [option, value] : call_.options)
            if (option == &own("from"))
                anchor(value);
            else if (option == &own("pid"))
                refuse(1, "which process this is, is not certain");
    }

    void add_to(Input& input) {
        const Input own_flags = input_of_files(call_);
        outer_.redactor = call_.redactor;
        const auto append = [&](const std::u16string& flag, const SourcePlace& place) {
            input.flags.push_back(flag);
            input.places.push_back(place);
        };
        if (own_flags.command && call_.verb.name == "exec")
            for (const ReadToken& token : arguments_of(own_flags.command->size()))
                append(qel::i18n::utf8_to_ustring(token.text), contained_.place(token));
        // What has no place is on the command line, before what may follow a --.
        const std::size_t words = contained_.tokens.size() - call_.words.size();
        const std::size_t from_files = own_flags.places.size();
        for (std::size_t i = 0; i != own_flags.flags.size(); ++i)
            append(own_flags.flags[i], i < from_files
                                           ? own_flags.places[i]
                                           : contained_.place(contained_.tokens[words + i - from_files]));
    }

private:
    [[noreturn]] void refuse(std::size_t token, const std::string& why) const {
        throw std::runtime_error(contained_.place(contained_.tokens[token]).text() + ": " + why);
    }

    Call read() const {
        const Verb* const verb = verb_of(contained_.tokens[1].text);
        if (verb == nullptr || !takes_flags(*verb) || takes_files(*verb))
            refuse(1, "orvane-config is not called with flags here");
        Tokens args;
        for (std::size_t i = 2; i != contained_.tokens.size(); ++i)
            args.push_back(qel::i18n::utf8_to_ustring(contained_.tokens[i].text));
        try {
            return read_call(*verb, args, outer_.out, outer_.err);
        } catch (const Misused& fault) {
            refuse(1, "orvane-config would refuse this call" +
                          (outer_.has(own("redact")) ? "" : ": " + std::string(fault.what())));
        }
    }

    void anchor(std::string& file) const {
        const bool is_absolute = file.starts_with('/') || (file.size() > 2 && file[1] == ':');
        if (!is_absolute)
            refuse(1, "where the file of its flags is, is not certain: name it by its absolute path");
        if (contained_.files.is_for_container && !contained_.files.contained.contains(file))
            refuse(
                1,
                "the file of its flags is in the container, and not known here: check that file by itself");
        file.insert(0, contained_.files.root);
        outer_.err << "orvane-config: also read " << shown_name(outer_, file) << '\n';
    }

    /// The server gets what follows its program, too.
    ReadTokens arguments_of(std::size_t size) const {
        const auto begin = contained_.tokens.end() - static_cast<std::ptrdiff_t>(size);
        ReadTokens command = unwrapped({begin, contained_.tokens.end()});
        command.erase(command.begin());
        if (!command.empty() && !command[0].text.starts_with("--"))
            throw std::runtime_error(contained_.place(command[0]).text() +
                                     ": whether this is the server's is not certain");
        return command;
    }

    const Call& outer_;
    const ContainedCall& contained_;
    Call call_;
};

} // namespace

void add_call(Input& input, const Call& outer, const ContainedCall& contained) {
    Contained(outer, contained).add_to(input);
}

} // namespace orvane
