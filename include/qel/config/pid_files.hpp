// The files through which a running server's process is found.
//
// "main.pid" in `pid_root` holds the process identifier in decimal digits, without a line end. It is
// published before the endpoint files and withdrawn after them.
//
// Permissions are the umask's affair, links are followed, and a forked child that leaves main removes its parent's files:
// docs/runtime-files.md says what a server does about these, and what may be called from several threads.
#pragma once

#include "qel/config/export.hpp"
#include "qel/config/server_settings.hpp"
#include "qel/util/scoped_file.hpp"

namespace qel::config {

/// Writes a pid file on construction, replacing one that is there, and removes it on destruction. A
/// moved-from object removes nothing. A second owner of one file would truncate the first one's, and remove
/// it: one file, one owner. `pointer = std::make_unique<...>(...)` makes a second one.
///
/// The path is used as given, both times. After the process has changed its current directory a relative one
/// names another file: that one is removed, if it is there, and the one written stays. The same holds for a
/// relative pid root.
class ZEP_CONFIG_API scoped_pid_file {
public:
    /// Any path; no directory is created. Throws config_io_error when the file cannot be opened or written,
    /// std::bad_alloc. Nothing is removed then: a file that was opened but not written stays behind.
    scoped_pid_file(const Path& file, const unsigned& pid);
    scoped_pid_file(const scoped_pid_file&) = delete;
    ///@{
    /// Moves throw nothing; the moved-from object removes nothing. An assignment removes the file owned so far, unless
    /// the other object owns the same path: a file that is announced again stays.
    scoped_pid_file(scoped_pid_file&&) noexcept;
    scoped_pid_file& operator=(scoped_pid_file&&) noexcept;
    ///@}
    scoped_pid_file& operator=(const scoped_pid_file&) = delete;
    /// A file that cannot be removed is left, without an exception.
    ~scoped_pid_file();

private:
    util::filesystem::scoped_file file_;
};

/// The same for the server's main process, file "main.pid".
class ZEP_CONFIG_API scoped_master_pid_file {
public:
    /// Throws bad_config when the settings have no pid root; otherwise like scoped_pid_file.
    scoped_master_pid_file(const ServerSettings& settings, const unsigned& pid);
    scoped_master_pid_file(const scoped_master_pid_file&) = delete;
    ///@{
    /// Moves throw nothing; the moved-from object removes nothing. An assignment removes the file owned so far, unless
    /// the other object owns the same path: a file that is announced again stays.
    scoped_master_pid_file(scoped_master_pid_file&&) noexcept;
    scoped_master_pid_file& operator=(scoped_master_pid_file&&) noexcept;
    ///@}
    scoped_master_pid_file& operator=(const scoped_master_pid_file&) = delete;
    ~scoped_master_pid_file();

private:
    util::filesystem::scoped_file file_;
};

/// The process identifier in "main.pid". Leading white space is skipped; the first character that is no digit
/// ends it.
///
/// Never signal what this returns without checking it. A file that is empty (its writer has only just opened
/// it) or holds no number gives 0, a number too large gives 4294967295, a negative one its complement, all
/// without an error; and the process may have ended, its number taken by another.
///
/// Throws bad_config (no pid root), config_io_error (no such file, or it cannot be read),
/// std::bad_alloc.
ZEP_CONFIG_API unsigned read_master_pid(const ServerSettings& settings);

} // namespace qel::config
