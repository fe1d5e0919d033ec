// Where Windows looks for programs.
#include "system/program_search.hpp"

#include <cstdlib>
#include <sstream>

namespace orvane {
namespace {

std::vector<std::u16string> words_of(const wchar_t* variable, const wchar_t* without) {
    const wchar_t* const value = _wgetenv(variable);
    std::wistringstream list(value == nullptr ? without : value);
    std::vector<std::u16string> words;
    for (std::wstring one; std::getline(list, one, L';');) {
        if (one.size() > 1 && one.front() == L'"' && one.back() == L'"') one = one.substr(1, one.size() - 2);
        if (!one.empty()) words.emplace_back(one.begin(), one.end());
    }
    return words;
}

} // namespace

ProgramSearch program_search() {
    // The current directory comes before all others there.
    ProgramSearch search{{qel::util::filesystem::Path(u".")}, {u""}};
    for (const std::u16string& directory : words_of(L"PATH", L""))
        search.directories.emplace_back(directory);
    for (const std::u16string& ending : words_of(L"PATHEXT", L".COM;.EXE;.BAT;.CMD"))
        search.endings.push_back(ending);
    return search;
}

bool names_a_place(const std::u16string& program) {
    return program.find_first_of(u"/\\:") != program.npos;
}

} // namespace orvane
