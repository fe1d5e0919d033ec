// What operators are told about each flag, and what the tool knows about it that cannot be asked.
#pragma once

#include "reference/forms.hpp"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// What a flag does besides setting its value.
enum class Trait {
    none,
    required,
    limits_next,       ///< only some flags are known right after it
    replaces_listener, ///< drops what was said of the listener before
    starts_https,      ///< without it, those that need HTTPS have no effect
    needs_https,
};

/// What a flag does that is given again.
enum class Repeats { nothing, last, adds };

/// What a switch does to the thing that it is about, which by default is the other way.
enum class Way { not_a_switch, on, off };

struct Reference {
    std::u16string_view wide{};
    std::string_view flag{}; ///< the same text
    std::string_view subject{};
    std::string_view value{}; ///< how the form is written; empty for a switch
    Form form = Form::none;
    Trait trait = Trait::none;
    Repeats repeats = Repeats::nothing;
    Way way = Way::not_a_switch;
    std::string_view core{};     ///< of a switch: the words of the flag that name the thing
    std::string_view thing{};    ///< of a switch, as a sentence names it: "the banner"
    std::string_view synonyms{}; ///< names from other servers, as in reference.def

    /// With {name} for flags.
    std::string_view raw_meaning{}, raw_relations{}, raw_example{};
    std::string_view raw_repetition{}; ///< how its second occurrence does what Repeats says
    std::string_view raw_default{};    ///< what holds without the flag
    std::string_view largest{};        ///< number that it takes, where its form has larger ones

    std::string meaning() const;
    std::string repeated() const;
    std::string relations() const;                  ///< what it requires or excludes; may be empty
    std::string example() const;                    ///< the flag and what follows, quoted for a shell
    std::string sample() const;                     ///< the value in the example
    std::vector<std::string> example_words() const; ///< the example, taken apart
    std::string by_default() const;                 ///< what holds without the flag; empty where nothing does

    std::string whole_example() const; ///< as it is written in reference.def

    bool is_switch() const { return way != Way::not_a_switch; }
    bool holds(Holds what) const { return row_of(form).holds == what; }
};

/// All flags, those of one subject together.
std::span<const Reference> references();

/// The reference of a flag, or null when the text is none.
const Reference* reference_of(std::u16string_view flag);
const Reference* reference_of(std::string_view flag);

/// `text` with each {name} replaced by the flag of that name, where there is one.
std::string with_flags(std::string_view text);

/// An example with the flags, and with the paths of this system; as text, quoted for its shell.
std::vector<std::string> words_of_example(std::string_view raw);
std::string example_of(std::string_view raw);

/// The first flag of the reference with this trait.
const Reference& flag_with(Trait trait);

/// The words that a value can be, where its form names them all.
std::vector<std::string> keywords(const Reference& reference);

/// What other servers call a setting of this one.
struct Synonym {
    std::string_view name;
    const Reference* reference; ///< null: this server has no such setting
    Form kind = Form::none;     ///< of the value that the other server's flag takes, where it is another
    std::string value;          ///< that the other server's switch stands for
    std::string advice;         ///< what to do where there is no such setting
};

/// The names of reference.def for the flag, in its order.
std::vector<Synonym> synonyms_of(const Reference& reference);

/// By the words of a name, "log-file" or "logfile".
std::optional<Synonym> synonym_of(std::string_view words);

} // namespace orvane
