// The values that gdb_test.py prints.
#include "qel/config/config.hpp"

#include <iostream>

using namespace qel::config;

__attribute__((noinline)) void stop_here(const ServerSettings&, const Path&) {
    std::cout << std::flush;
}

int main() {
    ServerSettings settings;
    const std::deque<std::u16string> tokens = {u"--auto-deploy-root",
                                               u"D",
                                               u"--https",
                                               u"h:9943",
                                               u"--x509-private-key",
                                               u"k\u00e9y",
                                               u"--num-workers",
                                               u"0",
                                               u"--attach-cache",
                                               u"p@h:1",
                                               u"--user-data",
                                               u"a b",
                                               u"--ssl-allowed-client",
                                               u"u:x",
                                               u"--queue-time-trigger",
                                               u"5",
                                               u"--log-severity",
                                               u"warning",
                                               u"--log-root",
                                               u"",
                                               u"--profile",
                                               u"on cpu",
                                               u"--request-timeout",
                                               u"00:00:01.5"};
    if (parse_settings(settings, tokens, std::cerr)) return 1;
    const Path path(u"a//b"), none;
    const http_endpoint endpoint = {};
    const time_duration fraction(-1, -2, -3, -1), forever(boost::date_time::pos_infin),
        never(boost::date_time::not_a_date_time), zero;
    const WorkerMemoryLimit unset;
    const optional<Path> plain(path);
    stop_here(settings, path);
    return endpoint.port() + !none.empty() + !plain + fraction.is_special() + !forever.is_special() +
           !never.is_special() + !zero.is_zero() + !(unset == WorkerMemoryLimit());
}
