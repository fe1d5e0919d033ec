// Values that do not mean what they seem to.
#include "explaining/rules.hpp"
#include "explaining/warning_rules.hpp"
#include "reference/flag_texts.hpp"
#include "text/lists.hpp"
#include "text/quoting.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

using qel::i18n::ustring_to_utf8;

/// The lines that the occurrence alone adds to a record.
std::vector<std::pair<std::string, std::string>> lines_of(const Occurrence& occurrence) {
    std::vector<std::pair<std::string, std::string>> lines;
    for (const Setting& setting : settings_of(ask(CommandLine{occurrence}).settings))
        lines.insert(lines.end(), setting.lines.begin(), setting.lines.end());
    return lines;
}

/// The duration as the server reads it.
std::string as_duration(const std::u16string& text) {
    const auto lines = lines_of(occurrence_of(std::u16string(flag::queue_time_trigger), text));
    return lines.empty() ? "" : lines[0].second;
}

bool is_number(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

/// H...H:MM[:SS[.f...f]]
bool has_the_form_of_a_duration(std::string text) {
    for (char& c : text)
        if (is_number({&c, 1})) c = '0';
    const std::string rest = text.substr(std::min(text.find_first_not_of('0'), text.size()));
    if (rest.starts_with(":00:00.0")) return rest.find_first_not_of('0', 7) == rest.npos;
    return rest.size() != text.size() && (rest == ":00" || rest == ":00:00");
}

/// As the server writes it, what has another form: 1h30m, 90 min; empty for anything but numbers with units.
std::u16string with_colons(const GivenValue& value) {
    if (value.text.find(u':') != value.text.npos) return {};
    const Readings all = readings(value.reference, value.text);
    return all.empty() ? u"" : all[0].value;
}

std::u16string_view port_of(const std::u16string& text) {
    return std::u16string_view(text).substr(text.find_last_of(u":@") + 1);
}

/// The part of a listener before the last colon; nothing without a colon.
std::optional<std::u16string_view> host_of(const GivenValue& value) {
    const std::size_t colon = value.text.rfind(u':');
    if (!value.has(Form::address) || colon == value.text.npos) return std::nullopt;
    return std::u16string_view(value.text).substr(0, colon);
}

/// "h:80" of "http://h:80"; empty if that is not all of it.
std::u16string without_scheme(const GivenValue& value) {
    const Readings all = readings(value.reference, value.text);
    const bool whole = !all.empty() && all[0].sample.empty() && value.text.ends_with(u"://" + all[0].value);
    return whole ? all[0].value : u"";
}

bool is_between_brackets(std::u16string_view host) {
    return host.size() > 2 && host.front() == u'[' && host.back() == u']';
}

bool ends_in_a_port(std::u16string_view host) {
    return all_digits(host) || (std::count(host.begin(), host.end(), u':') == 1 && host.find(u':') != 0 &&
                                all_digits(host.substr(host.find(u':') + 1)));
}

} // namespace

Suspicion negative(const GivenValue& value) {
    const bool port = value.reference.holds(Holds::port);
    const std::u16string_view number = port ? port_of(value.text) : value.text;
    if (!(port || value.has(Form::number)) || !number.starts_with(u'-') || !all_digits(number.substr(1)))
        return {};
    Occurrence measured = value.occurrence;
    // Read the same way, but put into the record at once, not at the end of the line.
    if (measured[0].text == flag::https) measured[0].text = flag::http;
    for (const auto& [name, text] : lines_of(measured))
        if (is_number(text) && text != "0" && (!port || name.ends_with("port")))
            return "the number is negative, and the server reads it as " + text;
    return {};
}

Suspicion hours(const GivenValue& value) {
    const std::string text = ustring_to_utf8(value.text);
    if (!value.has(Form::duration) || text == "0" || has_the_form_of_a_duration(text)) return {};
    const std::u16string meant = with_colons(value);
    const std::string taken = as_duration(value.text);
    if (taken.empty() || as_duration(meant) == taken) return {};
    const std::string advice =
        meant.empty() ? "hours come first" : "for " + text + " write " + ustring_to_utf8(meant);
    return {"this means " + taken + " here; " + advice, meant};
}

Suspicion host(const GivenValue& value) {
    const auto host = host_of(value);
    if (!host || host->empty() || is_between_brackets(*host)) return {};
    if (host->find(u'/') != host->npos)
        return {"write only host and port, without http:// and without a path", without_scheme(value)};
    if (*host == u"*")
        return {"no host is called *; to listen on all addresses, give only the port", value.text.substr(2)};
    if (host->find_first_not_of(u"0123456789.") == host->npos && !all_digits(*host) && !is_ipv4(*host))
        return "this is not an IPv4 address";
    const bool odd = std::any_of(host->begin(), host->end(), [](char16_t c) {
        return c < 0x80 && is_one_of(c, u" \t!\"#$&'()*+,;<=>?@[\\]^`{|}~");
    });
    return odd || host->front() == u'-' ? "no host can have this name" : "";
}

Suspicion two_ports(const GivenValue& value) {
    const auto host = host_of(value);
    if (!host || !ends_in_a_port(*host)) return {};
    return "there are two ports; the first is read as part of the host";
}

Suspicion ipv6(const GivenValue& value) {
    const auto host = host_of(value);
    if (!host || is_between_brackets(*host) || host->find(u':') == host->npos) return {};
    const std::size_t end = static_cast<std::size_t>(host->data() + host->size() - value.text.data());
    return "an IPv6 address goes in brackets: " +
           shown(value.text.substr(0, end - host->size()) + u"[" + std::u16string(*host) + u"]" +
                 value.text.substr(end));
}

Suspicion empty_host(const GivenValue& value) {
    const auto host = host_of(value);
    if (!host || !host->empty()) return {};
    std::u16string without = value.text;
    without.erase(without.rfind(u':'), 1);
    return "the host is empty; write " + shown(without);
}

constexpr const char* any_free_port = "with port 0, each start takes another free port";

Suspicion port_0(const GivenValue& value) {
    if (!value.has(Form::address) && !value.has(Form::cache)) return {};
    if (port_of(value.text).find_first_not_of(u"+-0") != std::u16string_view::npos) return {};
    return value.has(Form::cache) ? "no cache can be reached on port 0" : any_free_port;
}

Suspicion origin(const GivenValue& value) {
    if (!value.has(Form::origins)) return {};
    for (const std::u16string& one : split_words(value.text, u", ")) {
        if (one == u"*" || one == u"null") continue;
        const std::size_t scheme = one.find(u"://");
        if (scheme == one.npos || scheme == 0)
            return shown(one) + " has no scheme; write https://" + ustring_to_utf8(one);
        if (one.find_first_of(blanks) != one.npos)
            return shown(one) + " contains a space that separates no origins";
        if (one.find(u';') != one.npos) {
            std::u16string meant = value.text;
            std::replace(meant.begin(), meant.end(), u';', u',');
            return {"separate the origins with commas, not semicolons", meant};
        }
        const std::size_t slash = one.find(u'/', scheme + 3);
        if (slash == one.npos) continue;
        std::u16string meant;
        if (slash + 1 == one.size())
            meant = std::u16string(value.text).erase(value.text.find(one) + slash, 1);
        return {shown(one) + " has a path or a slash at its end, which no browser sends", meant};
    }
    return {};
}

Suspicion profile_off(const GivenValue& value) {
    if (value.occurrence[0].text != flag::profile) return {};
    const std::u16string word = value.text.substr(0, value.text.find(u' '));
    if (word == u"on" || word == u"off") return {};
    return {"this switches profiling off, because the first word is not on",
            lower(word) == u"on" ? u"on" + value.text.substr(word.size()) : u""};
}

void control_port(const AcceptedLine& accepted, WarningCollector& warnings) {
    const auto& port = accepted.settings.control_port();
    const Occurrence* const given = accepted.last(flag::control_port);
    if (!port || given == nullptr || given->back().text.starts_with(u'-')) return;
    if (*port > 65535) warnings.about_value(given, ": the largest port is 65535");
    if (*port == 0) warnings.about_value(given, std::string(": ") + any_free_port);
}

void raised(const AcceptedLine& accepted, WarningCollector& warnings) {
    const auto& interval = accepted.settings.statistics_log_interval();
    const Occurrence* const given = accepted.last(flag::statistics_log_interval);
    if (!interval || given == nullptr || *interval != qel::config::time_duration(0, 0, 1)) return;
    const std::string as_given = as_duration(given->back().text), taken = lines_of(*given)[0].second;
    if (as_given != taken) warnings.about_value(given, ": the server raises this to " + taken);
}

void small_size(const AcceptedLine& accepted, WarningCollector& warnings) {
    // A threshold may be small; each of the other flags has its own rule.
    constexpr std::u16string_view others[] = {flag::http_linger_threshold, flag::log_rotation_size};
    for (const Reference& one : references()) {
        const Occurrence* const given = one.form == Form::size ? accepted.last(one.wide) : nullptr;
        if (given == nullptr || contains(others, one.wide)) continue;
        if (const std::string bytes = lines_of(*given)[0].second; std::stoull(bytes) < 1024)
            warnings.about_value(given, ": this is " + bytes + " bytes; is a unit missing?");
    }
}

void small_rotation(const AcceptedLine& accepted, WarningCollector& warnings) {
    const auto& size = accepted.settings.log_rotation_size();
    if (size && *size < std::uint64_t{64} * 1024)
        warnings.about_value(accepted.last(flag::log_rotation_size),
                             ": log files of less than 64 KiB are rotated all the time");
}

void zero_timeout(const AcceptedLine& accepted, WarningCollector& warnings) {
    const auto& timeout = accepted.settings.request_timeout();
    if (timeout && timeout->ticks() == 0)
        warnings.about_value(accepted.last(flag::request_timeout), ": for no time limit, leave the flag out");
}

void worker_count(const AcceptedLine& accepted, WarningCollector& warnings) {
    const auto& count = accepted.settings.num_workers();
    const Occurrence* const given = accepted.last(flag::num_workers);
    if (!count || given == nullptr || given->back().text.starts_with(u'-')) return;
    if (*count == 0) warnings.about_value(given, ": no worker is started");
    if (*count > 1000) warnings.about_value(given, ": each worker is a process; is the number right?");
}

void severity(const AcceptedLine& accepted, WarningCollector& warnings) {
    const Occurrence* const given = accepted.last(flag::log_severity);
    if (given != nullptr && (given->back().text == u"out" || given->back().text == u"err"))
        warnings.about_value(given,
                             ": this ranks above error, so errors are not logged; did you mean error?");
}

} // namespace orvane
