// The walk over the tokens, and the completion of the record after it.
#include "qel/config/parse_settings.hpp"

#include "parsing/flag_table.hpp"
#include "parsing/flag_texts.hpp"
#include "parsing/regular_flags.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <ostream>
#include <string_view>

namespace qel::config {
namespace {

using code = boost::system::error_code;

/// A number that differs for all flags. If a new flag's is taken, the switch below does not compile ("duplicate case
/// value"); then choose other letters.
constexpr std::uint32_t fingerprint(std::u16string_view token) noexcept {
    if (token.size() < 3) return 0;
    const auto size = static_cast<std::uint32_t>(token.size());
    return size << 16 ^ std::uint32_t{token[2]} << 8 ^ token[token.size() / 2 + 1];
}

/// The position of the first flag, from `from` on, that equals the token; the number of flags if none does.
std::size_t find_flag(std::u16string_view token, std::size_t from) noexcept {
    enum : std::size_t {
#define ZEP_FLAG(name, text) at_##name,
#include "qel/config/flags.def"
        nowhere
    };
    const auto known = [&](std::size_t position, std::u16string_view text) {
        return position >= from && std::ranges::equal(text, token) ? position : nowhere;
    };
    switch (fingerprint(token)) {
#define ZEP_FLAG(name, text)                                                                                 \
    case fingerprint(flag::name):                                                                            \
        return known(at_##name, flag::name);
#include "qel/config/flags.def"
    default:
        return nowhere;
    }
}

/// Takes flag after flag until the tokens end, or one is unknown or out of range. `failing` is the flag that a failure
/// names.
code take_flags(Walk& walk, std::u16string_view& failing) try {
    const auto rows = flag_rows();
    std::size_t first = 0; // of the flags that the next token is compared with
    while (walk.cursor != walk.end) {
        const std::u16string_view token = *walk.cursor;
        // After a flag that falls through, a failure still names that flag.
        if (first == 0) failing = token;
        const std::size_t position = find_flag(token, first);
        if (position == rows.size()) {
            walk.out << "unrecognized option: " << i18n::ustring_to_term(token) << std::endl;
            return error_code::unrecognized_flag();
        }
        const Row& row = rows[position];
        row.take(walk);
        first = row.next == Next::falls_through ? position + 1 : 0;
    }
    return error_code::success();
} catch (const OutOfRange& failure) {
    walk.out << failure.flag << failure.fault;
    if (failure.limit) walk.out << *failure.limit;
    return error_code::out_of_range();
}

/// The same, and turns every std::exception into a code, including those of the stream.
code walk_tokens(Walk& walk) {
    std::u16string_view failing;
    try {
        return take_flags(walk, failing);
    } catch (const std::exception& failure) {
        walk.out << failure.what() << " (at option '" << i18n::ustring_to_term(failing) << "')";
        return error_code::parse_error();
    }
}

/// Completes the record with what the walk collected.
code complete(Walk& walk) {
    ServerSettings& settings = walk.settings;
    settings.lumo_root() = std::move(walk.lumo_root);
    walk.user_data.append_to(settings.user_data());

    if (!walk.auto_deploy_root_given) return error_code::missing_required_flag();
    const Path& extracted_below =
        walk.extract_root_given ? settings.extract_root() : settings.auto_deploy_root();
    settings.extract_root() = i18n::operator/(extracted_below, u".zep_deployed");
    if (walk.https_given) {
        SslContext& tls = walk.ssl_context;
        if (!walk.allowed_clients.empty()) tls.allowed_clients(std::move(walk.allowed_clients));
        if (!tls.cipher_list()) tls.cipher_list(std::string("ALL"));
        HttpsSettings& https = engaged(settings.https());
        https.http() = std::move(walk.https);
        https.ssl_context() = std::move(tls);
    }
    return error_code::success();
}

} // namespace

boost::system::error_code parse_settings(ServerSettings& settings, const std::deque<std::u16string>& args,
                                         std::ostream& out) {
    if (args.empty()) return error_code::missing_required_flag();
    Walk walk{settings, out, args.begin(), args.end()};
    const code failure = walk_tokens(walk);
    return failure ? failure : complete(walk);
}

} // namespace qel::config
