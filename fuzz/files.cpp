// Readers of runtime files take any content: they return what is documented, or throw what is.
#include <boost/asio/ip/tcp.hpp>

#include "fuzz.hpp"

#include <boost/system/system_error.hpp>

#include <filesystem>

#include <dlfcn.h>
#include <unistd.h>

// Addresses only: a name made up here must not reach a name server.
extern "C" [[gnu::visibility("default")]] int getaddrinfo(const char* host, const char* service,
                                                          const addrinfo* wanted, addrinfo** result) {
    static const auto system = reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    addrinfo numeric = *wanted;
    numeric.ai_flags |= AI_NUMERICHOST;
    return system(host, service, &numeric, result);
}

void qel::config::fuzz::examine(std::string_view bytes) {
    static const auto root =
        std::filesystem::temp_directory_path() / ("zep_fuzz_" + std::to_string(getpid()));
    std::filesystem::create_directory(root);
    S settings;
    settings.pid_root() = settings.endpoint_root() = Path(root.u16string());
    for (const char* name : {"main.pid", "control", "http"})
        std::ofstream(root / name, std::ios_base::binary) << bytes;

    promise(read_master_pid(settings) == read_master_pid(settings), "a pid file that stays reads the same");
    const auto colon = bytes.find(':');
    try {
        const std::u16string host = read_http_endpoint(settings, HTTPProtocol::http).host_name();
        promise(std::equal(host.begin(), host.end(), bytes.begin(), bytes.begin() + std::ptrdiff_t(colon),
                           [](char16_t unit, char byte) { return unit == static_cast<unsigned char>(byte); }),
                "each byte up to the colon is a unit of the host");
    } catch (const config_io_error&) {
        promise(colon == bytes.npos, "only a file without a colon is refused");
    }
    try {
        const tcp_endpoint endpoint = read_control_endpoint(settings);
        const scoped_control_endpoint_file written(settings, endpoint);
        promise(read_control_endpoint(settings) == endpoint, "an endpoint that was read is read back");
    } catch (const boost::system::system_error&) { // no address
    }
    std::filesystem::remove_all(root);
}
