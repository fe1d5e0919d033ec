// A record as text, one field a line.
#include "print_record.hpp"

#include "escape.hpp"
#include "record_fields.hpp"

#include "qel/i18n/convert.hpp"

#include <boost/date_time/posix_time/time_formatters.hpp>

#include <concepts>
#include <ostream>

namespace orvane {
namespace {

using namespace qel::config;

template <class T>
concept Record = requires(const T& value) {
    for_each_field(value, [](const char*, const auto&) {});
};

/// Settings that are off or empty say nothing, but inside a listener or a cache a port 0 does.
template <class T>
constexpr bool holds_settings = std::same_as<T, ServerSettings> || std::same_as<T, SslContext>;

template <class T>
bool is_set(const T&) {
    return true;
}
bool is_set(bool value) {
    return value;
}
bool is_set(const Path& value) {
    return !value.empty();
}

std::string text_of(bool value) {
    return value ? "true" : "false";
}
std::string text_of(std::unsigned_integral auto value) {
    return std::to_string(value);
}
std::string text_of(const std::string& value) {
    return value;
}
std::string text_of(const std::u16string& value) {
    return qel::i18n::ustring_to_utf8(value);
}
std::string text_of(const Path& value) {
    return text_of(value.text());
}
std::string text_of(const time_duration& value) {
    return boost::posix_time::to_simple_string(value);
}
template <class T>
requires std::is_enum_v<T> std::string text_of(T value) {
    return std::string(to_text(value));
}

template <class T>
concept Plain = requires(const T& value) {
    text_of(value);
};

class Printer {
public:
    explicit Printer(std::ostream& out) : out_(out) {}

    template <Plain T>
    void print(const std::string& name, const T& value) {
        out_ << name << " = " << escape(text_of(value)) << '\n';
    }

    template <class T>
    void print(const std::string& name, const optional<T>& value) {
        if (value) print(name, *value);
    }

    template <class T>
    void print(const std::string& name, const std::vector<T>& values) {
        print_elements(name, values);
    }
    template <class T>
    void print(const std::string& name, const std::set<T>& values) {
        print_elements(name, values);
    }

    void print(const std::string& name, const std::pair<std::u16string, std::u16string>& entry) {
        print(name + ".key", entry.first);
        print(name + ".value", entry.second);
    }

    void print(const std::string& name, const AccessMap& clients) {
        std::size_t position = 0;
        for (const auto& [client, archives] : clients) {
            const std::string element = name + index(position++);
            print(element + ".name", client);
            print(element + ".archives", archives);
        }
    }

    template <Record T>
    void print(const std::string& name, const T& record) {
        const std::string prefix = name.empty() ? name : name + ".";
        for_each_field(record, [&](const char* field, const auto& value) {
            if (!holds_settings<T> || is_set(value)) print(prefix + field, value);
        });
    }

private:
    static std::string index(std::size_t position) { return "[" + std::to_string(position) + "]"; }

    template <class Elements>
    void print_elements(const std::string& name, const Elements& values) {
        std::size_t position = 0;
        for (const auto& value : values)
            print(name + index(position++), value);
    }

    std::ostream& out_;
};

} // namespace

void print_record(const ServerSettings& settings, std::ostream& out) {
    Printer(out).print("", settings);
}

} // namespace orvane
