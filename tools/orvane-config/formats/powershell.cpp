// The format powershell: a command line, only written.
#include "formats/format_table.hpp"
#include "text/powershell_word.hpp"

namespace orvane {

std::string as_powershell(const TokenGroups& groups) {
    return joined(groups, powershell_word, " `\n    ") + '\n';
}

} // namespace orvane
