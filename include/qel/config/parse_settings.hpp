// From command-line flags to a settings record.
#pragma once

#include "qel/config/error_code.hpp"
#include "qel/config/export.hpp"
#include "qel/config/server_settings.hpp"

#include <deque>
#include <iosfwd>
#include <string>

namespace qel::config {

/// Reads the flags `args` (one token each, the program's name not included) into `settings` and stops at the
/// first failure, whose text goes to `out`.
///
/// | result                | when                              | written to `out`                           |
/// |-----------------------|-----------------------------------|--------------------------------------------|
/// | success               | all well                          | a line for each user-data key given again  |
/// | missing_required_flag | no tokens, or no auto-deploy root | nothing                                    |
/// | unrecognized_flag     | a token is no flag                | `unrecognized option: TOKEN` and a line end |
/// | parse_error           | a value is missing or bad         | the reason, " (at option 'FLAG')"          |
/// | out_of_range          | a number is outside its range     | the reason                                 |
///
/// The last two do not end their line. Warnings of the first row come before any failure's text.
///
/// What the flags before the failure stored remains in the record; so does what the failing flag stored before
/// it was checked: a number that is out of range, a rejected overflow action, rejected CORS origins. Fields that
/// no flag names keep what they held, except that at the end, in this order,
/// - `lumo_root` is replaced by the roots given, even when there are none;
/// - `user_data` receives the pairs given, behind what it held, in ascending order of key;
/// - `extract_root` is the extract root given, or else the auto-deploy root, joined with ".zep_deployed";
/// - `https` is replaced by what the flags of the HTTPS listener and of TLS say, if the former is given.
///
/// So lumo roots, user data, the HTTPS listener and TLS settings leave nothing in the record when a flag
/// fails. Without an auto-deploy root the first two of these steps are done all the same.
///
/// Inside the walk over the tokens every std::exception, std::bad_alloc included, becomes parse_error; at the
/// end std::bad_alloc passes out, and so it does when memory runs out while a failure is being written. The
/// steps before the one that failed are done then and those behind it are not; `user_data` keeps the pairs that
/// it has received. A stream that has exceptions enabled lets its own pass out.
///
/// Takes time linear in the tokens, with two exceptions. User data is put in order, n log n for n pairs; and
/// each of the allowed clients in one value gets an ordered set of all the archives in it, so that their numbers
/// multiply. Ill-formed UTF-16 is shown as U+FFFD and harms nothing.
[[nodiscard]] ZEP_CONFIG_API boost::system::error_code
parse_settings(ServerSettings& settings, const std::deque<std::u16string>& args, std::ostream& out);

} // namespace qel::config
