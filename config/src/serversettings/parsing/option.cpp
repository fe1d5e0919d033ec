// The flag functions, made from the list.
#include "qel/config/option.hpp"

#include "parsing/flag_texts.hpp"

namespace qel::config::option {

#define ZEP_FLAG(name, text)                                                                                 \
    std::u16string name() {                                                                                  \
        return std::u16string(flag::name);                                                                   \
    }
#include "qel/config/flags.def"

} // namespace qel::config::option
