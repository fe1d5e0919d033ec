// The settings of a record, with their names.
#include "probing/settings.hpp"

#include "probing/record_fields.hpp"

#include "qel/i18n/convert.hpp"

#include <boost/date_time/posix_time/time_formatters.hpp>

#include <concepts>
#include <utility>

namespace orvane {
namespace {

using namespace qel::config;

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

/// Gathers the lines of one setting.
class Lines {
public:
    explicit Lines(Setting& setting) : lines_(setting.lines) {}

    template <Plain T>
    void add(const std::string& name, const T& value) {
        lines_.emplace_back(name, text_of(value));
    }

    template <class T>
    void add(const std::string& name, const optional<T>& value) {
        if (value) add(name, *value);
    }

    template <class T>
    void add(const std::string& name, const std::vector<T>& values) {
        add_elements(name, values);
    }
    template <class T>
    void add(const std::string& name, const std::set<T>& values) {
        add_elements(name, values);
    }

    void add(const std::string& name, const std::pair<std::u16string, std::u16string>& entry) {
        add(name + ".key", entry.first);
        add(name + ".value", entry.second);
    }

    void add(const std::string& name, const AccessMap& clients) {
        std::size_t position = 0;
        for (const auto& [client, archives] : clients) {
            const std::string element = name + index(position++);
            add(element + ".name", client);
            add(element + ".archives", archives);
        }
    }

    template <Record T>
    void add(const std::string& name, const T& record) {
        for_each_field(record, [&](const char* field, const auto& value) { add(name + "." + field, value); });
    }

private:
    static std::string index(std::size_t position) { return "[" + std::to_string(position) + "]"; }

    template <class Elements>
    void add_elements(const std::string& name, const Elements& values) {
        std::size_t position = 0;
        for (const auto& value : values)
            add(name + index(position++), value);
    }

    std::vector<std::pair<std::string, std::string>>& lines_;
};

/// Gathers the settings of a record and of the records inside it.
class Settings {
public:
    std::vector<Setting> all{};

    template <Record T>
    void add(const std::string& name, const T& record, bool present) {
        const std::string prefix = name.empty() ? name : name + ".";
        for_each_field(record, [&](const char* field, const auto& value) {
            add(prefix + field, value, present && (!holds_settings<T> || is_set(value)));
        });
    }

    template <Record T>
    void add(const std::string& name, const optional<T>& record, bool present) {
        add(name, record ? *record : T(), present && record);
    }

    template <class T>
    void add(const std::string& name, const T& value, bool present) {
        Setting& setting = all.emplace_back(Setting{name});
        if (present) Lines(setting).add(name, value);
    }
};

} // namespace

std::vector<Setting> settings_of(const ServerSettings& settings) {
    Settings gathered;
    gathered.add("", settings, true);
    return std::move(gathered.all);
}

std::set<std::size_t> differing(const std::vector<Setting>& before, const std::vector<Setting>& after) {
    std::set<std::size_t> positions;
    for (std::size_t i = 0; i != before.size(); ++i)
        if (before[i] != after[i]) positions.insert(i);
    return positions;
}

std::vector<Difference> differences(const ServerSettings& before, const ServerSettings& after) {
    const auto old_settings = settings_of(before), new_settings = settings_of(after);
    std::vector<Difference> result;
    for (const std::size_t position : differing(old_settings, new_settings))
        result.push_back({old_settings[position], new_settings[position]});
    return result;
}

} // namespace orvane
