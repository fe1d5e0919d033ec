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
    const bool gcc = call.value(own("format")) == "gcc";
    if (!gcc) keep_bytes(stdout);
    call.out << (gcc ? to_gcc(cases) : to_sarif(cases));
    call.cases = std::move(cases);
}

} // namespace orvane
