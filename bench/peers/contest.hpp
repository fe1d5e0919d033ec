// The runs that are compared: every parser with every command line.
#pragma once

#include "../corpus.hpp"
#include "peer.hpp"

#include "qel/config/parse_settings.hpp"

#include <iostream>
#include <memory>
#include <stdexcept>

namespace qel::config::bench {

/// A command line in the form of main()'s arguments.
class Arguments {
public:
    explicit Arguments(std::vector<std::string> tokens) : tokens_(std::move(tokens)) {
        tokens_.insert(tokens_.begin(), "orvane");
        for (std::string& token : tokens_)
            argv_.push_back(token.data());
        argv_.push_back(nullptr);
    }
    void operator()(const Peer& peer, Values& values) {
        peer.parse(static_cast<int>(tokens_.size()), argv_.data(), values);
    }

private:
    std::vector<std::string> tokens_;
    std::vector<char*> argv_{};
};

inline Arguments arguments(const Corpus& corpus, const Peer& peer) {
    std::vector<std::string> tokens = corpus.narrow;
    if (peer.token != nullptr)
        for (std::string& token : tokens)
            token = peer.token(token);
    return Arguments(tokens);
}

/// Throws unless the parser finds the same values as getopt_long; of repeated flags abseil keeps only the last.
inline void check(const Corpus& corpus, const Peer& peer) {
    const auto values = [&corpus](const Peer& one) {
        Values found;
        arguments(corpus, one)(one, found);
        if (one.fetch != nullptr) one.fetch(found);
        return found;
    };
    if (!(values(peer) == values(peers.front())))
        throw std::logic_error(std::string(peer.name) + " takes " + corpus.name + " differently");
}

/// Calls run(line, parser, flags, parse) for each; `flags` is the number to divide by, and parse(), which may be kept,
/// does the work once.
template <class Run>
void for_each_contestant(Run run) {
    const auto ours = [&run](const std::string& line, int flags, const Corpus& corpus) {
        run(line, "zep_config", flags, [tokens = corpus.wide] {
            ServerSettings settings;
            if (parse_settings(settings, tokens, std::cerr)) throw std::logic_error("refused");
        });
    };
    const auto theirs = [&run](const std::string& line, int flags, const Corpus& corpus, const Peer& peer) {
        run(line, peer.name, flags, [&peer, tokens = std::make_shared<Arguments>(arguments(corpus, peer))] {
            Values values;
            (*tokens)(peer, values);
        });
    };
    // abseil's variables keep their values, so a line has to give every flag that the lines before it gave.
    for (const Corpus& corpus : corpora()) {
        ours(corpus.name, 1, corpus);
        for (const Peer& peer : peers) {
            check(corpus, peer);
            theirs(corpus.name, 1, corpus, peer);
        }
    }
    for (const int flags : {100, 1'000, 10'000}) {
        ours("repeated", flags, repeated(flags));
        for (const Peer& peer : peers)
            if (flags <= peer.repeated) theirs("repeated", flags, repeated(flags), peer);
    }
    ours("all kinds", 10'000, repeated(10'000, all_kinds));
    for (const Peer& peer : peers)
        theirs("all kinds", peer.repeated, repeated(peer.repeated, all_kinds), peer);
}

} // namespace qel::config::bench
