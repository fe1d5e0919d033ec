// The space in the directories that the server fills.
#include "preflight/space.hpp"

#include "preflight/amounts.hpp"
#include "preflight/directory_settings.hpp"
#include "preflight/size_settings.hpp"
#include "system/entry.hpp"
#include "text/quoting.hpp"

#include "qel/util/native_path.hpp"

#include <chrono>
#include <filesystem>
#include <system_error>

namespace orvane::preflight {
namespace {

/// With fewer, a server that writes logs, archives or runtime files soon cannot.
constexpr std::uint64_t few_files = 1000;

/// How much of a directory is looked at to learn what is in use.
constexpr std::size_t most_entries = 20'000;
constexpr std::chrono::seconds longest_walk(2);

struct Used {
    std::uint64_t bytes = 0;
    bool complete = true;
};

Used used_in(const Path& directory) {
    namespace fs = std::filesystem;
    const auto deadline = std::chrono::steady_clock::now() + longest_walk;
    Used used;
    std::size_t entries = 0;
    std::error_code error;
    fs::recursive_directory_iterator at(qel::util::filesystem::native(directory),
                                        fs::directory_options::skip_permission_denied, error);
    for (; !error && at != fs::recursive_directory_iterator(); at.increment(error)) {
        if (++entries > most_entries || std::chrono::steady_clock::now() > deadline) {
            used.complete = false;
            break;
        }
        std::error_code gone;
        if (!at->is_regular_file(gone) || at->is_symlink(gone)) continue;
        if (const std::uintmax_t size = at->file_size(gone); !gone) used.bytes += size;
    }
    used.complete = used.complete && !error;
    return used;
}

void look_at_limit(const SizeSetting& limit, const ServerSettings& settings, Findings& findings) {
    const auto size = limit.bytes(settings);
    const auto directory = limit.directory(settings);
    if (!size || !directory) return;
    const auto room = room_in(*directory);
    if (!room || room->bytes >= *size) return;
    const Used used = limit.counts_files ? used_in(*directory) : Used();
    if (room->bytes + used.bytes >= *size) return;
    const std::string where = shown(directory->text());
    if (!used.complete)
        findings.add(Kind::size_limit, limit.flag,
                     where + " has too many files to add up their sizes; it has " + amount(room->bytes) +
                         " free");
    else
        findings.add(Kind::little_space, limit.flag,
                     where + " has " + amount(room->bytes) + " free" +
                         (used.bytes == 0 ? "" : " and holds " + amount(used.bytes)) +
                         ": it is full before the limit of " + amount(*size) + " is reached",
                     "Lower the limit, or use a larger file system.");
}

void look_at_room(const DirectorySetting& setting, const ServerSettings& settings, Findings& findings) {
    std::size_t position = 0;
    for (const Path& path : setting.directories(settings)) {
        const Path named = path.empty() ? Path(u".") : path;
        const Path there = entry_at(named).state == Entry::State::absent ? named.parent_path() : named;
        const auto room = room_in(there);
        const std::string where = shown(there.text());
        if (room && (room->bytes == 0 || room->files == std::uint64_t{0}))
            findings.add(Kind::no_space, setting.flag,
                         "the file system of " + where + " is full" +
                             (room->bytes == 0 ? "" : ": it can hold no more files"),
                         "Make room there, or choose another directory.", position);
        else if (room && room->files && *room->files < few_files)
            findings.add(Kind::few_files, setting.flag,
                         "the file system of " + where + " can hold only " + std::to_string(*room->files) +
                             " more files",
                         "Remove files there, or choose another directory.", position);
        ++position;
    }
}

} // namespace

void look_at_space(const Context& context, Findings& findings) {
    for (const DirectorySetting& setting : directory_settings)
        if (setting.writes) look_at_room(setting, context.settings, findings);
    for (const SizeSetting& limit : size_settings)
        if (limit.directory != nullptr) look_at_limit(limit, context.settings, findings);
}

} // namespace orvane::preflight
