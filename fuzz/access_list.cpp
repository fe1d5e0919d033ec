// An access list that is accepted can be written from the record, and read back.
#include "fuzz.hpp"

void qel::config::fuzz::examine(std::string_view bytes) {
    const auto record = accepted(option::https_allowed_client(), text_from(bytes));
    if (!record) return;
    const auto& clients = record->https()->ssl_context().allowed_clients();
    promise(!clients.empty(), "a list has a client");
    Tokens line = {option::auto_deploy_root(), u"D", option::https(), u"1"};
    for (const auto& [name, archives] : clients) {
        promise(!name.empty() && name.find_first_of(":,") == name.npos, "a name holds no separator");
        std::u16string value = utf8_to_ustring(name);
        for (const auto& archive : archives)
            value += (archive == *archives.begin() ? u':' : u',') + archive;
        line.insert(line.end(), {option::https_allowed_client(), value});
    }
    promise(parse(line).settings == *record, "what is written from the record gives the record");
}
