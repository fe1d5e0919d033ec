// Without libFuzzer: examines the files given, or those in the directories given.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size);

int main(int argc, char** argv) {
    int count = 0;
    for (int i = 1; i != argc; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            std::ifstream file(entry.path(), std::ios_base::binary);
            const std::string bytes{std::istreambuf_iterator<char>(file), {}};
            std::cerr << entry.path() << '\n';
            LLVMFuzzerTestOneInput(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
            ++count;
        }
    }
    return count == 0;
}
