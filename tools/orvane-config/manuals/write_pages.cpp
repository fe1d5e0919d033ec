// The program that writes the manual pages, when the project is built: orvane-manuals DIRECTORY
#include "manuals/pages.hpp"
#include "printing/roff.hpp"

#include "qel/config/build_info.hpp"

#include <algorithm>
#include <fstream>
#include <string>

namespace orvane::manuals {
namespace {

/// "Nov  2 2026" as 2026-11-02: the form that manual pages want.
std::string with_numbers(std::string_view date) {
    constexpr std::string_view months = "JanFebMarAprMayJunJulAugSepOctNovDec";
    const std::string month = std::to_string(months.find(date.substr(0, 3)) / 3 + 1);
    std::string numbers = std::string(date.substr(7)) + (month.size() == 1 ? "-0" : "-") + month + "-" +
                          std::string(date.substr(4, 2));
    std::replace(numbers.begin(), numbers.end(), ' ', '0');
    return numbers;
}

bool write_page(const Page& page, const std::string& directory) {
    std::ofstream out(directory + "/" + std::string(page.name) + "." + std::to_string(page.section));
    out << ".TH " << roff_title(page.name) << ' ' << page.section << ' '
        << with_numbers(zep_config_build_date) << " \"orvane\\-config " << zep_config_version
        << "\" \"Orvane server\"\n.SH NAME\n"
        << roff(page.name) << " \\- " << roff(page.about) << '\n';
    page.write(out);
    out << ".SH SEE ALSO\n" << page.see_also << '\n';
    return bool(out.flush());
}

} // namespace
} // namespace orvane::manuals

int main(int, char** argv) {
    using namespace orvane::manuals;
    return std::ranges::all_of(pages, [&](const Page& page) { return write_page(page, argv[1]); }) ? 0 : 1;
}
