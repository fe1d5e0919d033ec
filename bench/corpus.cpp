#include "corpus.hpp"

#include "qel/config/option.hpp"
#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <array>
#include <fstream>
#include <stdexcept>

namespace qel::config::bench {

void Corpus::add(const std::string& token) {
    wide.push_back(i18n::utf8_to_ustring(token));
    narrow.push_back(token);
}

std::vector<Corpus> corpora() {
    std::vector<Corpus> all;
    for (const char* name : {"minimal", "typical", "full"}) {
        Corpus& corpus = all.emplace_back(Corpus{name});
        std::ifstream file(std::string(ZEP_BENCH_CORPORA "/") + name + ".txt");
        for (std::string token; std::getline(file, token);)
            corpus.add(token);
        if (corpus.narrow.empty()) throw std::runtime_error("no tokens in " + corpus.name);
    }
    return all;
}

Corpus repeated(int count, int kinds) {
    std::string flags[all_kinds];
    std::ranges::transform(std::array{option::lumo_root(), option::user_data(), option::log_handler(),
                                      option::profile(), option::cors_allowed_origins(),
                                      option::start_cache(), option::attach_cache(),
                                      option::https_allowed_client()},
                           flags, i18n::ustring_to_utf8);
    Corpus corpus{std::to_string(count) + " flags"};
    if (kinds == all_kinds) corpus.name += " of all kinds";
    corpus.add(i18n::ustring_to_utf8(option::auto_deploy_root()));
    corpus.add("/srv/orvane/deploy");
    for (int i = 0; i != count; ++i) {
        const std::string n = std::to_string(i);
        const std::string values[all_kinds] = {"/opt/telvar/runtime/" + n,
                                               "key" + n + " value" + n,
                                               "text/json;type=statistics /usr/bin/logger -t " + n,
                                               "on category" + n,
                                               "https://host" + n + ".example.com",
                                               "provider" + n + "@localhost:6379",
                                               "provider" + n + "@host" + n + ".example:6379",
                                               "client" + n};
        corpus.add(flags[i % kinds]);
        corpus.add(values[i % kinds]);
    }
    return corpus;
}

std::deque<std::u16string> for_walk_alone(std::deque<std::u16string> tokens) {
    const auto root = std::find(tokens.begin(), tokens.end(), option::auto_deploy_root());
    tokens.erase(root, root + 2);
    return tokens;
}

} // namespace qel::config::bench
