// There are no programs: see verbs/without_machine.cpp.
#include "system/become.hpp"

#include <ostream>

namespace orvane {

int become(const Tokens&, std::ostream& err) {
    err << "orvane-config: there are no programs here\n";
    return 127;
}

} // namespace orvane
