#include "corpus.hpp"

#include "qel/config/option.hpp"
#include "qel/i18n/convert.hpp"

#include <algorithm>
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

Corpus repeated(int count) {
    using i18n::ustring_to_utf8;
    const std::string roots = ustring_to_utf8(option::lumo_root()),
                      data = ustring_to_utf8(option::user_data()),
                      handler = ustring_to_utf8(option::log_handler()),
                      profile = ustring_to_utf8(option::profile());
    Corpus corpus{std::to_string(count) + " flags"};
    corpus.add(ustring_to_utf8(option::auto_deploy_root()));
    corpus.add("/srv/orvane/deploy");
    for (int i = 0; i != count; ++i) {
        const std::string n = std::to_string(i);
        const std::string pairs[][2] = {{roots, "/opt/telvar/runtime/" + n},
                                        {data, "key" + n + " value" + n},
                                        {handler, "text/json;type=statistics /usr/bin/logger -t " + n},
                                        {profile, "on category" + n}};
        for (const std::string& token : pairs[i % 4])
            corpus.add(token);
    }
    return corpus;
}

std::deque<std::u16string> for_walk_alone(std::deque<std::u16string> tokens) {
    const auto root = std::find(tokens.begin(), tokens.end(), option::auto_deploy_root());
    tokens.erase(root, root + 2);
    return tokens;
}

} // namespace qel::config::bench
