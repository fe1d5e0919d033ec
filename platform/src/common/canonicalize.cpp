// The canonical form of a path: one walk over its components, in one buffer that grows and shrinks.
#include "qel/util/canonicalize.hpp"

#include "file_system.hpp"
#include "path_syntax.hpp"

#include <limits>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace qel::util::filesystem {

/// The answers of the file system so far.
struct Canonicalizer::Memo {
    std::unordered_map<std::u16string, Entry> entries{};
    std::unordered_map<std::u16string, std::u16string> starting_points{};

    /// Asks when it is inserted, so only if the path is new. If that throws, nothing is inserted.
    struct Question {
        const std::u16string& path;
        operator Entry() const { return look_up(path); }
    };

    // References into both maps stay valid while the maps grow.
    const Entry& entry(const std::u16string& path) {
        return entries.try_emplace(path, Question{path}).first->second;
    }

    const std::u16string& start(std::u16string_view root) {
        std::u16string key(root);
        const auto known = starting_points.find(key);
        if (known != starting_points.end()) return known->second;
        std::u16string point = starting_point(root);
        return starting_points.emplace(std::move(key), std::move(point)).first->second;
    }
};

namespace {

/// Builds the canonical text of a path component by component.
template <class Memo>
class Fold {
public:
    explicit Fold(Memo& memo) : memo_(memo) {}

    /// Starts again where a path with this root begins, or in the current directory if the root is empty.
    void start(std::u16string_view root) {
        Elements elements(memo_.start(root));
        steps_.clear();
        // The current directory of a process may have been removed; its relative paths then begin at a nameless one.
        replace(elements.root().empty() ? std::u16string_view(u".") : elements.root());
        const Entry& entry = memo_.entry(text_);
        missing_from_ = entry.kind == Entry::Kind::missing ? 0 : nowhere;
        if (entry.kind == Entry::Kind::resolved) replace(entry.target);
        add_all(elements);
    }

    void add(std::u16string_view component) {
        if (component == u".") return;
        if (component == u"..") return undo();

        steps_.push_back({text_.size(), {}});
        if (!ends_in_separator(text_)) text_ += separators.front();
        text_ += component;
        if (steps_.size() > missing_from_) return;

        const Entry& entry = memo_.entry(text_);
        if (entry.kind == Entry::Kind::plain) return;
        if (entry.kind == Entry::Kind::resolved) {
            steps_.back().before = text_.substr(0, steps_.back().length);
            return replace(entry.target);
        }
        if (entry.kind == Entry::Kind::link && links_ < most_links) return follow(entry.target);
        missing_from_ = steps_.size();
    }

    void add_all(Elements elements) {
        for (auto component = elements.next_component(); !component.empty();
             component = elements.next_component())
            add(component);
    }

    /// Compares only what has changed since the last comparison. Always pass the same text.
    bool equals(std::u16string_view wanted) {
        const std::size_t shared = std::min(text_.size(), wanted.size());
        while (agreed_ < shared && text_[agreed_] == wanted[agreed_])
            ++agreed_;
        return agreed_ == text_.size() && agreed_ == wanted.size();
    }

    const std::u16string& text() const { return text_; }

private:
    static constexpr std::size_t nowhere = std::numeric_limits<std::size_t>::max();
    static constexpr int most_links = 40; // a loop of links ends here, as it does in the systems themselves

    /// What is needed to undo one component.
    struct Step {
        std::size_t length;      // of the text before it
        std::u16string before{}; // that text itself, if the component replaced it
    };

    void undo() {
        if (steps_.empty()) return;
        const Step last = std::move(steps_.back());
        steps_.pop_back();
        if (last.before.empty())
            cut(last.length);
        else
            replace(last.before);
        if (steps_.size() < missing_from_) missing_from_ = nowhere;
    }

    void follow(std::u16string_view target) {
        ++links_;
        undo();
        const Elements elements(target);
        if (!elements.root().empty()) start(elements.root());
        add_all(elements);
    }

    void cut(std::size_t length) {
        text_.resize(length);
        agreed_ = std::min(agreed_, length);
    }

    void replace(std::u16string_view text) {
        cut(0);
        text_ = text;
    }

    Memo& memo_;
    std::u16string text_{};
    std::vector<Step> steps_{};
    std::size_t missing_from_ = nowhere; // the number of steps after which nothing exists on disk
    std::size_t agreed_ = 0;             // the length known to agree with the text compared with
    int links_ = 0;
};

} // namespace

Canonicalizer::Canonicalizer() : memo_(std::make_unique<Memo>()) {}
Canonicalizer::~Canonicalizer() = default;

Path Canonicalizer::canonicalize(const Path& path) {
    if (path.empty()) return Path();
    const Elements elements(path.text());
    Fold<Memo> fold(*memo_);
    fold.start(elements.root());
    fold.add_all(elements);
    return Path(fold.text());
}

bool Canonicalizer::is_same_or_below(const Path& path, const Path& root) {
    if (path.empty() || root.empty()) return path == root;
    const Path wanted = canonicalize(root);
    Elements elements(path.text());
    Fold<Memo> fold(*memo_);
    fold.start(elements.root());
    // For a path without a root, what is before the first component is not a step on the way up from `path`.
    if (!elements.root().empty() && fold.equals(wanted.text())) return true;
    for (auto component = elements.next_component(); !component.empty();
         component = elements.next_component()) {
        fold.add(component);
        if (fold.equals(wanted.text())) return true;
    }
    return false;
}

Path canonicalize(const Path& path) {
    return Canonicalizer().canonicalize(path);
}

} // namespace qel::util::filesystem
