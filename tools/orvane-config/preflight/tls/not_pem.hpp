// What people have instead of PEM, and how to convert it.
#pragma once

#include "preflight/tls/pem.hpp"

namespace orvane::preflight {

struct Mistake {
    std::string what, advice;
};

/// Why nothing of the wanted kind is in the file, or what is damaged in it.
Mistake mistake_in(const PemFile& pem, Content wanted, const std::string& text,
                   const qel::config::Path& path);

} // namespace orvane::preflight
