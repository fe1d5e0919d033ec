// From command-line flags to a settings record.
#pragma once

#include "qel/config/error_code.hpp"
#include "qel/config/export.hpp"
#include "qel/config/server_settings.hpp"

#include <deque>
#include <iosfwd>
#include <string>

namespace qel::config {

/// Parses the command line `args` (one token per argument, without the program's name) into `settings`. Stops at the
/// first failure and writes its text to `out`.
///
/// | result                | when                              | written to `out`                           |
/// |-----------------------|-----------------------------------|--------------------------------------------|
/// | success               | the line is valid                 | a line for each user-data key given again  |
/// | missing_required_flag | no tokens, or no auto-deploy root | no text for this result                    |
/// | unrecognized_flag     | a token is not a flag             | `unrecognized option: TOKEN` and a newline |
/// | parse_error           | a value is missing or bad         | the reason, " (at option 'FLAG')"          |
/// | out_of_range          | a number is outside its range     | the reason                                 |
///
/// The last two do not end with a newline. The warnings of the first row come before the text of any failure.
///
/// If a flag fails, the record keeps what the flags before it stored, and what the failing flag stored before the value
/// was checked: a number that is out of range, a rejected overflow action, rejected CORS origins. Fields that no flag
/// names keep their values, except for these final steps, in this order:
/// - `lumo_root` is replaced by the roots given, even if there are none;
/// - `user_data` receives the pairs given, after those it held, in ascending order of key;
/// - `extract_root` is set to the extract root given, or else to the auto-deploy root, joined with ".zep_deployed";
/// - `https` is replaced by the values of the HTTPS and TLS flags, if the HTTPS flag is given.
///
/// A flag that may be repeated adds to the list that the record held. Origins that it held count when new ones are
/// checked.
///
/// So if a flag fails, lumo roots, user data, the HTTPS listener and TLS settings leave nothing in the record. If only
/// the auto-deploy root is missing, the first two of these steps are still done (not if there are no tokens at all).
///
/// While the tokens are read, every std::exception, including std::bad_alloc, becomes parse_error. If memory runs out
/// in the final steps, or while the text of a failure is being written, std::bad_alloc is thrown. The steps before the
/// failing one are then done and those after it are not; `user_data` keeps the pairs that it has received. A stream
/// with exceptions enabled throws to the caller.
///
/// Takes time linear in the number of tokens, with two exceptions: user data and allowed clients are sorted, n log n
/// for n of them (user data n² if its keys were made to collide in a hash); and in one value of allowed clients, each
/// client gets a sorted set of all archives, so their numbers multiply. Ill-formed UTF-16 is shown as U+FFFD and is
/// otherwise harmless.
///
/// The global locale decides which white space around the names of clients is dropped, and whether a number may be
/// grouped (65'535). The format flags of `out` apply to the number in the text of an out_of_range.
[[nodiscard]] ZEP_CONFIG_API boost::system::error_code
parse_settings(ServerSettings& settings, const std::deque<std::u16string>& args, std::ostream& out);

} // namespace qel::config
