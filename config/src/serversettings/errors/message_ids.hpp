// The exceptions whose texts are in the platform's message catalog.
#pragma once

#include "qel/msgid/msgid_exception.hpp"

#include <string>

namespace qel::config {

/// A cache definition is malformed. Argument 1: the whole definition, as it was on the command line.
class CacheProviderBadFormat : public msgid::MsgIDException {
public:
    explicit CacheProviderBadFormat(std::u16string definition);
};

/// A cache to start is not on this machine. Argument 1: its host, in the terminal's encoding.
class StartCacheLocalhost : public msgid::MsgIDException {
public:
    explicit StartCacheLocalhost(std::string host);
};

} // namespace qel::config
