// A start-up on the minimal platform: one that is accepted, published and ended, and one that is refused.
#include <qel/config/config.hpp>

#include <fstream>
#include <sstream>

int main() {
    namespace config = qel::config;
    std::ostringstream said;
    config::ServerSettings settings;
    config::ProblemList problems;
    config::FlagSet flags;
    if (config::parse_settings(
            settings, {config::option::auto_deploy_root(), u"D", config::option::pid_root(), u"."}, said))
        return 1;
    if (config::validate_settings(settings, problems, flags)) return 2;
    {
        const config::scoped_master_pid_file file(settings, 4711);
        if (config::read_master_pid(settings) != 4711) return 3;
    }
    if (std::ifstream("./main.pid")) return 4;
    if (!config::parse_settings(settings, {config::option::attach_cache(), u"bad"}, said)) return 5;
    return said.str().find(" (at option '") == std::string::npos ? 6 : 0;
}
