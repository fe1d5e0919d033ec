// Readers of runtime files accept any content: what they return or throw is documented.
#include <boost/asio/ip/tcp.hpp>

#include "fuzz.hpp"

#include <filesystem>

#include <dlfcn.h>
#include <unistd.h>

// Only addresses: an invented name must not reach a name server.
extern "C" [[gnu::visibility("default")]] int getaddrinfo(const char* host, const char* service,
                                                          const addrinfo* hints, addrinfo** result) {
    addrinfo numeric = *hints;
    numeric.ai_flags |= AI_NUMERICHOST;
    return reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"))(host, service, &numeric,
                                                                                     result);
}

void examine(std::string_view bytes) {
    const auto root = std::filesystem::temp_directory_path() / ("zep_fuzz_" + std::to_string(getpid()));
    std::filesystem::create_directory(root);
    S settings;
    settings.pid_root() = settings.endpoint_root() = Path(root.u16string());
    for (const char* name : {"main.pid", "control", "http"})
        std::ofstream(root / name, std::ios_base::binary) << bytes;

    promise(read_master_pid(settings) == read_master_pid(settings), "a pid file that stays reads the same");
    try {
        const std::u16string host = read_http_endpoint(settings, HTTPProtocol::http).host_name();
        promise(std::string(host.begin(), host.end()) == bytes.substr(0, bytes.find(':')),
                "a byte is a unit of the host");
    } catch (const config_io_error&) {
        promise(bytes.find(':') == bytes.npos, "only a file without a colon is refused");
    }
    try {
        const tcp_endpoint endpoint = read_control_endpoint(settings);
        const scoped_control_endpoint_file written(settings, endpoint);
        promise(read_control_endpoint(settings) == endpoint, "an endpoint that was read is read back");
    } catch (const boost::system::system_error&) { // not an address
    }
    std::filesystem::remove_all(root);
}
