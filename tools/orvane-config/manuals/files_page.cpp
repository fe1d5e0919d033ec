// The manual page of the runtime files.
#include "manuals/pages.hpp"
#include "printing/roff.hpp"
#include "reference/reference.hpp"
#include "runtime/runtime_state.hpp"

#include <ostream>

namespace orvane::manuals {
namespace {

struct Text {
    std::string_view name, text;
};

constexpr std::string_view description =
    "A running server publishes small files, so that programs that know its "
    "flags can find it. The directories are "
    "those of {pid_root} and {endpoint_root}. A server publishes the pid "
    "file first, an endpoint file when its "
    "listener accepts connections, and removes all of them when it ends.";

constexpr Text runtime_files[] = {
    {"PID_ROOT/main.pid", "The process ID, in decimal digits: 4711"},
    {"ENDPOINT_ROOT/control", "Address and port of the control interface: 127.0.0.1:9920, or [::1]:9920"},
    {"ENDPOINT_ROOT/http", "Host name and port of the HTTP listener, in UTF-8: www.example.org:9910"},
    {"ENDPOINT_ROOT/https", "The same for the HTTPS listener."},
};

constexpr std::string_view format = "No file ends with a newline. Digits are not grouped. A file is "
                                    "truncated, then written: an empty one means that "
                                    "the server is starting. A server that is killed leaves its files. So "
                                    "the number in main.pid may belong to no "
                                    "process, or to another: do not signal it unchecked.";

constexpr struct {
    FileState state;
    std::string_view meaning;
} states[] = {
    {FileState::accepting, "With --connect: the endpoint accepts connections."},
    {FileState::running,
     "The process in main.pid is running, or its 'publish' is. It may not accept connections yet."},
    {FileState::published, "An endpoint is published, but no pid file tells whether its process is running."},
    {FileState::not_accepting, "With --connect: the endpoint accepts no connections."},
    {FileState::not_published, "There is no such file."},
    {FileState::starting, "The file exists and is still empty."},
    {FileState::stale, "No process has the number, or it started after the file was written."},
    {FileState::malformed, "The file is not what a server writes."},
    {FileState::unreadable, "This user may not read the file, or reading it failed."},
};

constexpr Text uses[] = {
    {"Find the server with these flags:",
     "orvane-config status {auto_deploy_root} /srv/orvane/deploy {pid_root} /run/orvane"},
    {"Publish the files for a program that does not write them:",
     "orvane-config publish {auto_deploy_root} /srv/orvane/deploy {pid_root} /run/orvane -- sleep 60"},
    {"Publish the endpoints when the program accepts connections:",
     "orvane-config publish --ready localhost:8080 {auto_deploy_root} /srv/orvane/deploy {pid_root} "
     "/run/orvane "
     "{endpoint_root} /run/orvane {http} localhost:8080 -- orvane"},
};

} // namespace

void write_files(std::ostream& out) {
    out << ".SH DESCRIPTION\n" << roff(with_flags(description)) << "\n.SH FILES\n";
    for (const auto& [name, text] : runtime_files)
        out << ".TP\n.I " << roff(name) << '\n' << roff(text) << '\n';
    out << ".PP\n"
        << roff(format) << "\n.SH STATES\n"
        << roff("'orvane-config status' reports one of these states for each file:") << '\n';
    for (const auto& [state, meaning] : states)
        out << ".TP\n.B " << roff(to_text(state)) << '\n' << roff(meaning) << '\n';
    out << ".SH EXAMPLES\n";
    for (const auto& [name, text] : uses)
        out << roff_example(name, with_flags(text));
}

} // namespace orvane::manuals
