// Pid files: their format, the place of the main one, their owners and reader.
#include "qel/config/pid_files.hpp"

#include "runtime_files/runtime_file.hpp"

#include <istream>
#include <ostream>

namespace qel::config {

template <>
struct detail::FileFormat<unsigned> {
    static void put(std::ostream& out, const unsigned& pid) { out << pid; }
    static void get(std::istream& in, unsigned& pid) { in >> pid; }
};

namespace {

Path main_pid_file_path(const ServerSettings& settings) {
    using i18n::operator/;
    if (!settings.pid_root()) BOOST_THROW_EXCEPTION(bad_config("no pid root"));
    return *settings.pid_root() / u"main.pid";
}

} // namespace

scoped_pid_file::scoped_pid_file(const Path& file, const unsigned& pid) : file_(write_file(file, pid)) {}
scoped_pid_file::scoped_pid_file(scoped_pid_file&&) noexcept = default;
scoped_pid_file& scoped_pid_file::operator=(scoped_pid_file&&) noexcept = default;
scoped_pid_file::~scoped_pid_file() = default;

scoped_master_pid_file::scoped_master_pid_file(const ServerSettings& settings, const unsigned& pid)
    : file_(write_file(main_pid_file_path(settings), pid)) {}
scoped_master_pid_file::scoped_master_pid_file(scoped_master_pid_file&&) noexcept = default;
scoped_master_pid_file& scoped_master_pid_file::operator=(scoped_master_pid_file&&) noexcept = default;
scoped_master_pid_file::~scoped_master_pid_file() = default;

unsigned read_master_pid(const ServerSettings& settings) {
    return read_file<unsigned>(main_pid_file_path(settings));
}

} // namespace qel::config
