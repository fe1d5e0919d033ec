// The format yaml: a list, a container of Kubernetes, or a service of a compose file.
#include "formats/format_table.hpp"
#include "formats/source_files.hpp"
#include "text/lists.hpp"

#include <yaml-cpp/yaml.h>

#include <algorithm>

namespace orvane {
namespace {

Spot spot_of(const YAML::Mark& mark) {
    return {static_cast<std::uint32_t>(std::max(mark.line, 0) + 1),
            static_cast<std::uint32_t>(std::max(mark.column, 0) + 1)};
}

[[noreturn]] void refuse(const YAML::Node& node, const std::string& why) {
    throw NotUnderstood(spot_of(node.Mark()), why);
}

/// Null where there is none: to look does not add it.
YAML::Node member(const YAML::Node& node, const char* name) {
    return node.IsMap() ? node[name] : YAML::Node(YAML::NodeType::Undefined);
}

enum class Kind { list, kubernetes, compose };

/// Whether a program that reads YAML takes it for something else than a string.
bool is_no_string(const YAML::Node& node) {
    double number{};
    bool truth{};
    return node.Tag() == "?" &&
           (YAML::convert<double>::decode(node, number) || YAML::convert<bool>::decode(node, truth));
}

/// Of a variable of compose, which has none but its own here.
std::string value_of(Walk& walk, const YAML::Node& node) {
    const VariableUse use = skip_variable(walk);
    if (use.otherwise) return *use.otherwise;
    const std::string name = use.name.empty() ? "NAME" : use.name;
    throw NotUnderstood(spot_of(node.Mark()),
                        "this would be replaced; give the value with --env NAME=VALUE, or write $$ for a $",
                        "compose would replace this; give the value with --env " + name +
                            "=VALUE, or write $$ for a $");
}

/// What Kubernetes or compose makes of a string: $$ is a $, and no variable is certain.
std::string text_of(const YAML::Node& node, Kind kind) {
    if (!node.IsScalar()) refuse(node, "this is not a string; for an empty token write ''");
    if (kind == Kind::list) return node.Scalar();
    if (is_no_string(node)) refuse(node, "only strings are accepted here; quote this");
    std::string text;
    const LocatedText all = located(node.Scalar());
    for (Walk walk(all); !walk.done();) {
        if (kind == Kind::compose && walk.peek() == '$' && walk.peek(1) != '$') {
            text += value_of(walk, node);
            continue;
        }
        if (kind == Kind::kubernetes && walk.comes("$("))
            refuse(node, "this would be replaced; write the value, or $$ for a $");
        if (walk.comes(kind == Kind::compose ? "$$" : "$$(")) walk.next();
        text += walk.next();
    }
    return text;
}

void add_words(ReadTokens& tokens, const YAML::Node& node, Kind kind) {
    if (!node.IsDefined() || node.IsNull()) return;
    if (node.IsSequence()) {
        for (const YAML::Node& one : node)
            tokens.push_back({text_of(one, kind), spot_of(one.Mark())});
        return;
    }
    if (kind != Kind::compose || !node.IsScalar()) refuse(node, "this is not a list of strings");
    const std::string text = text_of(node, kind);
    for (const ReadToken& token : read_sh({text, std::vector<Spot>(text.size(), spot_of(node.Mark()))}))
        tokens.push_back(token);
}

struct Container {
    std::string name;
    ReadTokens tokens;
    YAML::Node node, pod;
};

/// Only what has flags can be the server, or a call of this tool that reads them.
class Search {
public:
    void document(const YAML::Node& node) {
        if (node.IsSequence() && node.size() != 0 && node[0].IsMap()) return; // tasks, or other things
        if (node.IsSequence()) return add({"list", {}, node, node}, node, {}, Kind::list);
        if (member(node, "kind") && member(node, "kind").IsScalar() && node["kind"].Scalar() == "ConfigMap")
            maps_.push_back(node);
        if (const YAML::Node services = member(node, "services"); services && services.IsMap())
            for (const auto& one : services)
                add({one.first.Scalar(), {}, one.second, node}, member(one.second, "entrypoint"),
                    member(one.second, "command"), Kind::compose);
        else if (member(node, "args") || member(node, "command"))
            container(node, node);
        else
            pods(node);
    }

    ReadTokens only(SourceFiles& files) {
        if (found_.empty())
            throw NotUnderstood(
                {1, 1}, "this may be YAML or JSON, but no list, container or service in it has flags; give a "
                        "file with only the command that starts the server");
        if (found_.size() > 1)
            throw NotUnderstood(found_[1].tokens[0].spot, several + places(false), several + places(true));
        const Container& one = found_[0];
        files.is_for_container = true;
        for (const YAML::Node& mount : list(one.node, "volumeMounts"))
            for (const YAML::Node& volume : list(one.pod, "volumes"))
                if (text(mount, "name") == text(volume, "name"))
                    mount_map(text(mount, "mountPath"), text(member(volume, "configMap"), "name"), files);
        return one.tokens;
    }

private:
    static YAML::Node list(const YAML::Node& node, const char* name) {
        const YAML::Node found = member(node, name);
        return found && found.IsSequence() ? found : YAML::Node(YAML::NodeType::Sequence);
    }

    static std::string text(const YAML::Node& node, const char* name) {
        const YAML::Node found = node.IsDefined() ? member(node, name) : node;
        return found.IsDefined() && found.IsScalar() ? found.Scalar() : "";
    }

    void mount_map(const std::string& place, const std::string& name, SourceFiles& files) const {
        for (const YAML::Node& map : maps_)
            if (!name.empty() && text(member(map, "metadata"), "name") == name && member(map, "data"))
                for (const auto& file : map["data"])
                    files.contained[place + "/" + file.first.Scalar()] = file.second.Scalar();
    }

    /// Each list of containers, however deep.
    void pods(const YAML::Node& node) {
        if (++depth_ > 20) refuse(node, "this is nested too deeply");
        for (const YAML::Node& one : list(node, "containers"))
            container(one, node);
        if (node.IsMap())
            for (const auto& entry : node) {
                if (entry.second.IsMap()) pods(entry.second);
                if (entry.second.IsSequence() && entry.first.IsScalar() && entry.first.Scalar() == "items")
                    for (const YAML::Node& one : entry.second)
                        document(one);
            }
        --depth_;
    }

    void container(const YAML::Node& node, const YAML::Node& pod) {
        add({text(node, "name"), {}, node, pod}, member(node, "command"), member(node, "args"),
            Kind::kubernetes);
    }

    void add(Container one, const YAML::Node& first, const YAML::Node& second, Kind kind) {
        add_words(one.tokens, first, kind);
        add_words(one.tokens, second, kind);
        if (std::ranges::any_of(one.tokens, [](const ReadToken& token) {
                return token.text.starts_with("--") || token.text.find(" --") != std::string::npos;
            }))
            found_.push_back(std::move(one));
    }

    static constexpr const char* several = "several containers have flags; give each a file of its own";

    std::string places(bool with_names) const {
        return ": " + joined(
                          found_, ", ",
                          [&](const Container& one) {
                              const std::string name =
                                  with_names && !one.name.empty() ? one.name + " in " : "";
                              return name + "line " + std::to_string(one.tokens[0].spot.line);
                          },
                          " and ");
    }

    std::vector<Container> found_{};
    std::vector<YAML::Node> maps_{};
    int depth_ = 0;
};

} // namespace

ReadTokens read_manifest(const LocatedText& text, SourceFiles& files) {
    try {
        Search search;
        for (const YAML::Node& document : YAML::LoadAll(text.bytes))
            search.document(document);
        return search.only(files);
    } catch (const YAML::Exception& fault) {
        throw NotUnderstood(spot_of(fault.mark),
                            "this begins like YAML, but is none; give a file with only the server's flags");
    }
}

} // namespace orvane
