// The texts of the server's flags.
#pragma once

#include "qel/config/export.hpp"

#include <string>

/// One function per flag, which returns its text as a new string: option::log_root() is the text of the flag that
/// sets log_root. Most names are the words of the flag; those of the TLS flags are `https_` and the SslContext
/// field that they set. flags.def has all names with their texts. Each throws only std::bad_alloc.
namespace qel::config::option {

#define ZEP_FLAG(name, text)                                                                                 \
    /** A new string; throws std::bad_alloc. */                                                              \
    ZEP_CONFIG_API std::u16string name();
#include "qel/config/flags.def"

} // namespace qel::config::option
