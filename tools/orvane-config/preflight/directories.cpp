// The directories that the server uses.
#include "preflight/amounts.hpp"
#include "preflight/directory_settings.hpp"
#include "preflight/groups.hpp"
#include "preflight/space.hpp"
#include "system/entry.hpp"

#include "text/path_anchor.hpp"
#include "text/quoting.hpp"
#include "text/windows_name.hpp"

#include "qel/util/canonicalize.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace orvane::preflight {
namespace {

/// One directory of a setting.
struct Subject {
    const DirectorySetting& setting;
    std::u16string_view flag; ///< the one that was given
    std::size_t position;
    Path path; ///< absolute, without links
    Findings& findings;

    void add(Kind kind, std::string what, std::string advice = {}) const {
        findings.add(kind, flag, std::move(what), std::move(advice), position);
    }
    std::string name() const { return shown(path.text()); }
};

/// The nearest parent that is there, and what is known of it.
struct Parent {
    Path path;
    Entry there;
};

Parent nearest_parent(const Path& path) {
    for (Path parent = path.parent_path(); !parent.empty(); parent = parent.parent_path())
        if (Entry there = entry_at(parent); there.state != Entry::State::absent) return {parent, there};
    return {};
}

/// The outermost directory on the way that this user may not enter; the path itself when there is none.
Path obstacle_to(const Path& path) {
    Path obstacle = path;
    for (Path parent = path.parent_path(); !parent.empty(); parent = parent.parent_path())
        if (const Entry there = entry_at(parent); there.state == Entry::State::directory && !there.execute)
            obstacle = parent;
    return obstacle;
}

/// Judged by its extension: directories seldom have one of these.
bool looks_like_a_file(const Path& path) {
    constexpr std::array<std::u16string_view, 9> endings = {u".log", u".txt", u".pid",  u".sock", u".xml",
                                                            u".gz",  u".zip", u".json", u".conf"};
    return std::ranges::any_of(endings, [&](auto ending) { return path.text().ends_with(ending); });
}

/// What Windows lacks, or cannot have, so that nobody could create the directory; empty when that is not so.
std::string why_impossible(const Path& path) {
    if (!backslash_separates()) return {};
    const std::u16string volume = volume_of(path.text());
    if (!volume.empty() && entry_at(Path(volume + u"\\")).state == Entry::State::absent)
        return volume.ends_with(u':') ? "there is no drive " + shown(volume)
                                      : "there is no share " + shown(volume) + ", or it cannot be reached";
    const std::string why = why_no_windows_name(path.text());
    return why.empty() ? "" : "there is no directory " + shown(path.text()) + ": " + why;
}

void report_missing(const Subject& subject, bool link) {
    if (std::string why = why_impossible(subject.path); !why.empty())
        return subject.add(Kind::missing_directory, std::move(why), "Choose another path.");
    const auto [parent, there] = nearest_parent(subject.path);
    const std::string above = shown(parent.text());
    if (there.state == Entry::State::directory && there.read_only)
        return subject.add(Kind::read_only_file_system,
                           "there is no directory " + subject.name() + ", and the file system of " + above +
                               " is read-only",
                           "Mount it for writing, or choose another directory.");
    if (there.state != Entry::State::directory && there.state != Entry::State::unreachable)
        return subject.add(Kind::not_a_directory, above + " is not a directory", "Choose another path.");
    const bool may = there.write && there.execute;
    if (looks_like_a_file(subject.path))
        return subject.add(Kind::missing_directory,
                           "there is no directory " + subject.name() +
                               ", whose name looks like that of a file: this flag takes a directory",
                           "Name the directory alone, which may be " +
                               shown(subject.path.parent_path().text()) + ".");
    subject.add(Kind::missing_directory,
                (link ? "a symbolic link points to " + subject.name() + ", which does not exist"
                      : "there is no directory " + subject.name()) +
                    (may ? "" : ", and user " + user_name() + " may not create it in " + above),
                "Create it: " + command_to_create(subject.path, !may));
}

void report_missing_right(const Subject& subject, Right right, const char* verb, const Path& where,
                          bool own) {
    std::string advice = command_to_grant(right, where, own);
    // A directory such as /var/log serves others, too, and one such as /root is closed for a reason.
    if (!own)
        advice =
            (right == Right::write ? "If only the server uses this directory: " : "If its owner agrees: ") +
            advice + ". If not, choose another directory.";
    else
        advice = "Give user " + user_name() + " this right: " + advice;
    subject.add(Kind::missing_right, "user " + user_name() + " may not " + verb + " " + shown(where.text()),
                advice);
}

const char* uses_of(const DirectorySetting& setting) {
    if (!setting.writes) return setting.lists ? "readable" : "can be entered";
    return setting.lists ? "readable and writable" : "writable";
}

void look_at_rights(const Subject& subject, const Entry& there) {
    const auto& [flag, lists, writes, directories] = subject.setting;
    if (!there.rights_known)
        return subject.add(Kind::cannot_tell,
                           "the access-control list of " + subject.name() + " cannot be read",
                           "Run preflight as the owner of the directory, or as an administrator.");
    if (writes && there.read_only)
        return subject.add(Kind::read_only_file_system,
                           "the file system of " + subject.name() + " is read-only",
                           "Mount it for writing, or choose another directory.");
    if (!there.execute) return report_missing_right(subject, Right::enter, "enter", subject.path, there.own);
    if (writes && !there.write)
        return report_missing_right(subject, Right::write, "create files in", subject.path, there.own);
    if (lists && !there.read)
        return report_missing_right(subject, Right::list, "list", subject.path, there.own);
    std::string what = (there.link ? "a symbolic link to " : "") + subject.name() + ": " +
                       (subject.flag == flag ? uses_of(subject.setting) : "archives can be unpacked here");
    if (const auto room = writes ? room_in(subject.path) : std::nullopt; room)
        what += ", " + amount(room->bytes) + " free";
    subject.add(Kind::usable_directory, what);
}

void look_at_subject(const Subject& subject, const Entry& there) {
    switch (there.state) {
    case Entry::State::absent:
        return report_missing(subject, there.link);
    case Entry::State::directory:
        return look_at_rights(subject, there);
    case Entry::State::file:
    case Entry::State::other:
        return subject.add(Kind::not_a_directory, subject.name() + " is not a directory",
                           "Choose another path.");
    case Entry::State::loop:
        return subject.add(Kind::link_loop, "a symbolic link in " + subject.name() + " leads back to itself",
                           "Correct the link.");
    case Entry::State::unreachable: {
        const Path obstacle = obstacle_to(subject.path);
        return report_missing_right(subject, Right::enter, "enter", obstacle, entry_at(obstacle).own);
    }
    case Entry::State::too_long:
        return subject.add(Kind::missing_directory, "the path is longer than the system allows",
                           "Use a shorter path.");
    case Entry::State::failed:
        return subject.add(Kind::look_failed, subject.name() + ": " + there.failure);
    }
}

/// The flag that decides where archives are unpacked.
std::u16string_view given_flag(const DirectorySetting& setting, const Context& context) {
    const Finding about_it{Kind::usable_directory, setting.flag};
    return occurrence_of(about_it, context) == nullptr ? flag::auto_deploy_root : setting.flag;
}

void look_at_setting(const DirectorySetting& setting, const Context& context, Findings& findings) {
    std::size_t position = 0;
    for (const Path& path : setting.directories(context.settings)) {
        // Without a directory, a file's name is looked up in the current one.
        Path used = path.empty() ? Path(u".") : path;
        Entry there = entry_at(used);
        // The server makes the subdirectory of the archives itself.
        if (setting.flag == flag::extract_root && there.state == Entry::State::absent) {
            used = path.parent_path();
            there = entry_at(used);
        }
        const std::u16string_view flag = given_flag(setting, context);
        // What is missing has been said for the flag that names it.
        if (flag != setting.flag && there.state != Entry::State::directory) continue;
        const Subject subject{setting, flag, position++, qel::util::filesystem::canonicalize(used), findings};
        if (flag == setting.flag && anchor_of(path.text()) != PathAnchor::full)
            subject.add(Kind::relative_directory, "this means " + subject.name() + " now",
                        "Write the full path: the server may be started elsewhere.");
        look_at_subject(subject, there);
    }
}

} // namespace

void look_at_directories(const Context& context, Findings& findings) {
    for (const DirectorySetting& setting : directory_settings)
        look_at_setting(setting, context, findings);
    look_at_space(context, findings);
}

} // namespace orvane::preflight
