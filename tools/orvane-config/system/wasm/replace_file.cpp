// Files in memory: nobody else reads them, and no power fails.
#include "system/replace_file.hpp"

#include "qel/util/native_path.hpp"

#include <fstream>
#include <stdexcept>

namespace orvane {

void replace_file(const qel::util::filesystem::Path& file, const std::string& content) {
    std::ofstream out(qel::util::filesystem::native(file), std::ios_base::binary);
    out << content;
    if (!out.flush()) throw std::runtime_error("the file cannot be written");
}

} // namespace orvane
