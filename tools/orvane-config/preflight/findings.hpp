// What preflight finds on this machine.
#pragma once

#include "probing/effects.hpp"
#include "probing/source_places.hpp"

#include "qel/config/server_settings.hpp"

#include <mutex>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::preflight {

/// In the order from bad to good. With one of the first or third the server is not ready.
enum class Severity { blocking, warning, unknown, ok };

std::string_view to_text(Severity severity);

enum class Kind {
#define ZEP_FINDINGS_OF(group)
#define ZEP_FINDING(name, ...) name,
#include "preflight/findings.def"
};

/// What a kind of finding is about.
struct KindOfFinding {
    std::string_view group; ///< empty: any
    std::string_view id;
    Severity severity;
    std::string_view meaning;
};

/// All kinds, in the order of findings.def.
std::span<const KindOfFinding> kinds_of_findings();

const KindOfFinding& about(Kind kind);

/// Of several occurrences of a flag, the one that counts.
inline constexpr std::size_t last_given = static_cast<std::size_t>(-1);

struct Finding {
    Kind kind;
    std::u16string_view flag{};        ///< a constant of flag_texts.hpp; empty: the group as a whole
    std::string what{};                ///< what was found: a clause without a full stop
    std::string advice{};              ///< what to do: sentences; empty when nothing is to be done
    std::size_t position = last_given; ///< which occurrence of a flag that adds, counted from 0
    bool hides_value = false;          ///< the flag's value may be a secret, and is not shown
};

/// What the groups look at: an accepted line, and what the user allows.
struct Context {
    CommandLine line; ///< as it was given
    Effects effects;  ///< with origins
    qel::config::ServerSettings settings;
    SourcePlaces places{};    ///< of its tokens
    bool network = false;     ///< whether other machines may be contacted
    unsigned days = 30;       ///< a certificate that expires within them is a warning
    bool security = false;    ///< whether what is only weak is looked for, and shown what clients see
    unsigned ends_before = 0; ///< the process of the server that ends before this one starts; 0: none
    std::set<std::u16string> files_with_secrets{}; ///< of the files that tokens come from
};

/// Whether the server does not count as ready because of it.
bool is_in_the_way(const Finding& finding);

/// The occurrence that a finding is about; null when its flag was not given.
const Occurrence* occurrence_of(const Finding& finding, const Context& context);

/// "--http 9910 (tokens 5 and 6, flags.txt:3:1)".
std::string as_given(const Occurrence& occurrence, const Context& context, bool hides_value = false);

/// Each once, and without what is fine where something else about the same stands in the way.
std::vector<Finding> consistent(const std::vector<Finding>& findings);

/// Collects what a group finds. Threads may share it: a look that hangs is left to itself.
class Findings {
public:
    void add(Finding finding);
    void add(Kind kind, std::u16string_view flag, std::string what, std::string advice = {},
             std::size_t position = last_given) {
        add({kind, flag, std::move(what), std::move(advice), position});
    }

    std::vector<Finding> so_far() const;

private:
    mutable std::mutex mutex_;
    std::vector<Finding> findings_;
};

} // namespace orvane::preflight
