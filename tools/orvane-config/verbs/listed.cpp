// An answer as a list of remarks, for editors and CI.
#include "verbs/listed.hpp"

#include "system/exact_bytes.hpp"
#include "verbs/input.hpp"

#include <cstdio>
#include <ostream>
#include <utility>

namespace orvane {

std::string name_of(const Call& call, const Verdict& verdict) {
    if (!call.files.empty()) return shown_name(call, call.files[0]);
    return verdict.places.empty() ? command_line : verdict.places[0].file;
}

void list(const Call& call, std::vector<Case> cases) {
    const std::string format = call.value(own("format"));
    const std::string suite = "orvane-config " + std::string(call.verb.name);
    if (format != "gcc") keep_bytes(stdout);
    call.out << (format == "gcc"     ? to_gcc(cases)
                 : format == "sarif" ? to_sarif(cases)
                                     : to_junit(suite, cases, call.has(own("strict"))));
    call.cases = std::move(cases);
}

} // namespace orvane
