// The files by which a running server's process is found.
//
// "main.pid" in `pid_root` contains the process identifier in decimal digits, without a newline. Publish it before the
// endpoint files, and remove it after them.
//
// The umask sets the permissions, links are followed, and a forked child that returns from main removes its parent's
// files: docs/runtime-files.md says what a server should do about this, and what may be called from several threads.
#pragma once

#include "qel/config/export.hpp"
#include "qel/config/server_settings.hpp"
#include "qel/util/scoped_file.hpp"

namespace qel::config {

/// Writes a pid file on construction, replacing an existing one, and removes it on destruction. A moved-from
/// object removes nothing. One file must have one owner: a second owner truncates the first one's file, and later
/// removes it. Note that `pointer = std::make_unique<...>(...)` makes a second owner.
///
/// The path is used as given, both times. After the process has changed its current directory, a relative path
/// names another file: that one is removed, if it exists, and the one written stays. The same holds for a
/// relative pid root.
class ZEP_CONFIG_API scoped_pid_file {
public:
    /// Writes to any path; no directory is created. Throws config_io_error if the file cannot be opened or written,
    /// std::bad_alloc. On failure nothing is removed: a file that was opened but not written remains.
    [[nodiscard]] scoped_pid_file(const Path& file, const unsigned& pid);
    scoped_pid_file(const scoped_pid_file&) = delete;
    ///@{
    /// The moved-from object removes nothing. An assignment removes the file owned so far, unless the other object owns
    /// the same path: a file that is announced again stays.
    scoped_pid_file(scoped_pid_file&&) noexcept;
    scoped_pid_file& operator=(scoped_pid_file&&) noexcept;
    ///@}
    scoped_pid_file& operator=(const scoped_pid_file&) = delete;
    /// A file that cannot be removed remains; nothing is thrown.
    ~scoped_pid_file();

private:
    util::filesystem::scoped_file file_;
};

/// The same for the server's main process, file "main.pid".
class ZEP_CONFIG_API scoped_master_pid_file {
public:
    /// Throws bad_config if the settings have no pid root; otherwise like scoped_pid_file.
    [[nodiscard]] scoped_master_pid_file(const ServerSettings& settings, const unsigned& pid);
    scoped_master_pid_file(const scoped_master_pid_file&) = delete;
    ///@{
    /// The moved-from object removes nothing. An assignment removes the file owned so far, unless the other object owns
    /// the same path: a file that is announced again stays.
    scoped_master_pid_file(scoped_master_pid_file&&) noexcept;
    scoped_master_pid_file& operator=(scoped_master_pid_file&&) noexcept;
    ///@}
    scoped_master_pid_file& operator=(const scoped_master_pid_file&) = delete;
    ~scoped_master_pid_file();

private:
    util::filesystem::scoped_file file_;
};

/// The process identifier in "main.pid". Leading white space is skipped; the number ends at the first character that is
/// not a digit.
///
/// Never signal the returned value without checking it. A file that is empty (its writer has only just opened it) or
/// contains no number gives 0, a number that is too large gives 4294967295, and a negative one wraps around, all
/// without an error. The process may also have ended, and another one may have its number now.
///
/// Throws bad_config (no pid root), config_io_error (no such file, or it cannot be read),
/// std::bad_alloc.
[[nodiscard]] ZEP_CONFIG_API unsigned read_master_pid(const ServerSettings& settings);

} // namespace qel::config
