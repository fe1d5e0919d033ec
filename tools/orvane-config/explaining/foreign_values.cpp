// Values in the forms of other programs, and what they mean here.
#include "explaining/rules.hpp"
#include "text/lists.hpp"
#include "text/quoting.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

using qel::i18n::utf8_to_ustring;

/// The name of a service, as systems list them with their ports.
bool is_service(std::u16string_view name) {
    constexpr std::u16string_view names[] = {u"http", u"https",    u"http-alt", u"https-alt",
                                             u"www",  u"webcache", u"redis"};
    return contains(names, lower(std::u16string(name)));
}

/// Whether it can be a host: a name that is not a port's, or an address.
bool may_be_host(std::u16string_view text) {
    constexpr std::u16string_view name = u"0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ.-_";
    return !text.empty() && text.find_first_not_of(name) == text.npos && !is_service(text) &&
           (is_ipv4(text) || text[0] > u'9');
}

/// http://host:port/, host port, only a host.
Readings addresses(const std::u16string& value, const Reference& reference) {
    const std::u16string sample = utf8_to_ustring(reference.sample()), whole = folded(value);
    const std::u16string port = sample.substr(sample.find_last_of(u':') + 1);
    const std::size_t scheme = whole.find(u"://");
    const Reference* const other = reference_of(u"--" + lower(whole.substr(0, scheme)));
    if (other != nullptr && other != &reference) return {};
    std::u16string text = whole.substr(scheme == whole.npos ? 0 : scheme + 3);
    text.resize(std::min(text.find(u'/'), text.size()));
    Readings found;
    if (text != whole) found.push_back({text, "write only host and port, without a scheme or a path"});
    const auto words = split_words(text, u" ,;");
    const bool open =
        !words.empty() && (words[0].find(u':') >= words[0].size() - 1 || words[0].ends_with(u']'));
    if (words.size() == 2 && open && all_digits(trimmed(words[1], u":")) && !all_digits(words[0]))
        found.push_back(
            {trimmed(words[0], u":") + u":" + trimmed(words[1], u":"), "a colon separates host and port"});
    const std::size_t colon = text.find(u':');
    if (colon != text.npos && all_digits(text.substr(0, colon)) && colon == text.rfind(u':'))
        found.push_back(
            {text.substr(colon + 1) + u":" + text.substr(0, colon), "the host goes before the port"});
    if (whole.ends_with(u":")) text = trimmed(text, u":");
    if (may_be_host(text)) found.push_back({text + u":" + port, "the port is missing, for example", port});
    return found;
}

constexpr std::u16string_view some_provider = u"<provider>", sample_provider = u"redis";

/// redis://host:port, host:port, redis host port
Readings caches(const std::u16string& value, const Reference&) {
    std::u16string text = folded(value);
    constexpr auto why = "write a cache as provider@host:port";
    Readings found;
    const auto with_some_provider = [&found](const std::u16string& address) {
        found.push_back(
            {std::u16string(sample_provider) + u"@" + address, why, std::u16string(some_provider)});
    };
    if (const std::size_t scheme = text.find(u"://"); scheme != text.npos) {
        constexpr std::u16string_view protocols[] = {u"http", u"https", u"tcp", u"tls", u"ssl", u"udp"};
        const std::u16string provider = text.substr(0, scheme), rest = text.substr(scheme + 3);
        const std::u16string address = rest.substr(0, rest.find(u'/'));
        if (contains(protocols, lower(provider)))
            with_some_provider(address);
        else
            found.push_back({provider + u"@" + address, why});
        return found;
    }
    const auto words = split_words(text, u" ");
    // "cache1 6379" is more likely a host and its port.
    if (words.size() == 2 && words[0] != sample_provider && all_digits(words[1]))
        with_some_provider(words[0] + u":" + words[1]);
    else if (words.size() == 2)
        found.push_back({words[0] + u"@" + words[1], why});
    if (words.size() == 3) found.push_back({words[0] + u"@" + words[1] + u":" + words[2], why});
    if (text.find(u'@') == text.npos) {
        const auto parts = split_words(text, u":");
        if (parts.size() == 3) found.push_back({parts[0] + u"@" + parts[1] + u":" + parts[2], why});
        if (parts.size() == 2 && parts[0] == sample_provider)
            found.push_back({parts[0] + u"@" + parts[1], why});
        with_some_provider(text);
    } else if (text.find(u':') == text.npos && !all_digits(text.substr(text.find(u'@') + 1))) {
        found.push_back({text + u":6379", "the port is missing, for example", u"6379"});
    }
    return found;
}

Readings log_handlers(const std::u16string& value, const Reference&) {
    const std::size_t end = std::min(value.find(u' '), value.size());
    const std::u16string first = lower(value.substr(0, end)), rest = value.substr(end);
    Readings found;
    constexpr auto why = "the formats are text/plain, text/xml and text/json";
    const std::u16string format = first.substr(0, first.find(u';'));
    const std::u16string clause = first.substr(format.size());
    for (const std::u16string_view known : {u"text/plain", u"text/xml", u"text/json"}) {
        const std::u16string_view word = known.substr(5);
        const bool plain = word == u"plain" && (format == u"text" || format == u"txt" || format == u"log");
        if (!format.ends_with(word) && !format.ends_with(u"+" + std::u16string(word)) && !plain) continue;
        const std::u16string name(known);
        found.push_back({std::u16string(name).append(clause).append(rest), why});
        for (const char16_t* content : {u"default", u"statistics", u"dashboard"})
            if (clause.find(content) != clause.npos || (clause == u";" && rest.find(content) != rest.npos)) {
                const std::size_t command = clause == u";" ? rest.find(u' ', 1) : 0;
                found.push_back(
                    {name + u";type=" + content + (command == rest.npos ? u"" : rest.substr(command)),
                     "after the format goes ;type=default, ;type=statistics or ;type=dashboard"});
            }
    }
    return found;
}

/// k=v, k: v, k and several words.
Readings pairs(const std::u16string& value, const Reference&) {
    Readings found;
    const std::size_t at = value.find_first_of(u"=: \t");
    if (at == value.npos || at == 0) return found;
    const std::u16string key = value.substr(0, at), rest = trimmed(value.substr(at + 1), u" \t=");
    constexpr auto why = "write an entry as a key, a space and a value";
    found.push_back({key + u" " + rest, why});
    std::u16string escaped;
    for (const char16_t c : trimmed(rest, u"\""))
        escaped += is_one_of(c, u"\"\\") ? u"\\" + std::u16string(1, c) : std::u16string(1, c);
    found.push_back({key + u" \"" + escaped + u"\"", "put quotes around a value that contains spaces"});
    return found;
}

Readings clients(const std::u16string& value, const Reference&) {
    std::u16string list;
    for (const std::u16string& word : split_words(folded(value), u","))
        if (const std::u16string name = trimmed(word, u" ;"); !name.empty())
            list += (list.empty() ? u"" : u",") + name;
    const std::size_t colon = list.find(u':');
    for (std::size_t next = colon; colon != list.npos && (next = list.find(u':', next + 1)) != list.npos;)
        list[next] = u',';
    return {{list, "separate the names with commas, and the clients from the archives with one colon"}};
}

/// Other servers' words for those of this one.
constexpr std::u16string_view other_words[][2] = {
    {u"error", u" fatal critical crit alert emerg emergency severe panic quiet silent "},
    {u"warning", u" warnings wrn "},
    {u"information", u" notice informational normal default "},
    {u"debug", u" verbose fine dbg "},
    {u"trace", u" all finest finer silly everything "},
    {u"verify-peer-require-peer-cert", u" required require on yes true mutual mtls verify peer force "
                                       u"always enabled verify-peer require-and-verify "},
    {u"no-verify-peer", u" none off no false never disabled no-verify "},
    {u"purge_responses", u" purge drop discard delete remove evict "},
    {u"archive_responses", u" archive save store move disk "},
};

Readings words(const std::u16string& value, const Reference&) {
    Readings found;
    const std::u16string word = normalized(value);
    for (const auto& [own, others] : other_words)
        if (others.find(u" " + word + u" ") != others.npos)
            found.push_back({std::u16string(own), "this server has another word for that"});
    return found;
}

Readings no_readings(const std::u16string&, const Reference&) {
    return {};
}

/// "<port>", as documents have it.
bool is_template(std::u16string_view value) {
    const std::u16string_view text = value.substr(0, value.find_first_of(u"0123456789"));
    return text.size() == value.size() && value.starts_with(u'<') && value.ends_with(u'>');
}

constexpr ReadForeign* readers[] = {
#define ZEP_FORM(form, conversion, reader, ...) reader,
#define ZEP_FOREIGN_FORM(...)
#include "reference/forms.def"
};

} // namespace

Token token_of(const Reading& reading, std::size_t number) {
    if (reading.sample != some_provider)
        return {reading.value, number, reading.sample.empty() ? u"" : reading.value};
    return {reading.value, number, reading.sample + reading.value.substr(sample_provider.size())};
}

std::string why_no_port(const std::u16string& value) {
    if (is_template(value)) return "replace " + shown(value) + " by a number, with or without a host";
    const std::u16string text = bare(folded(value.substr(0, 1000)));
    const std::u16string port = text.substr(text.find_last_of(u":@") + 1);
    if (is_service(port)) return shown(port) + " is the name of a service: write the number of its port";
    if (text.starts_with(u"/") || text.starts_with(u"unix:"))
        return "the server listens on a port, not on the file of a socket";
    const std::size_t scheme = text.find(u"://");
    if (scheme != text.npos && text.find_first_of(u",;") != text.npos) return "write one address only";
    if (scheme != text.npos && reference_of(u"--" + text.substr(0, scheme)) != nullptr)
        return "the flag for " + shown(text.substr(0, scheme + 3)) + " is " +
               shown(u"--" + text.substr(0, scheme));
    const std::size_t odd = port.find_first_not_of(u"0123456789");
    if (odd == 0 || odd == port.npos) return {};
    return shown(port) + " is not a port: it contains the " +
           (is_alphanumeric(port[odd]) ? "letter " : "character ") + shown(port.substr(odd, 1));
}

Readings readings(const Reference& reference, const std::u16string& value) {
    const std::u16string clean = bare(value.substr(0, 10000));
    if (clean.empty() || is_template(value)) return {};
    return readers[place_of(reference.form)](clean, reference);
}

} // namespace orvane
