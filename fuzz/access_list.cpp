// An accepted access list can be written from the record and read back.
#include "fuzz.hpp"

void examine(std::string_view bytes) {
    const auto record = accepted(option::https_allowed_client(), text_from(bytes));
    if (!record) return;
    Tokens line = {option::https(), u"1"};
    for (const auto& [name, archives] : record->https()->ssl_context().allowed_clients()) {
        promise(!name.empty() && name.find_first_of(":,") == name.npos, "a name holds no separator");
        line.insert(line.end(), {option::https_allowed_client(), utf8_to_ustring(name)});
        for (const auto& archive : archives)
            line.back() += (archive == *archives.begin() ? u':' : u',') + archive;
    }
    promise(line.size() > 2 && parse_with_root(line).settings == *record, "a list is read back");
}
