// The verb `manual`: the manual pages.
#include "manuals/pages.hpp"
#include "printing/roff.hpp"
#include "verbs/call.hpp"

#include "qel/config/build_info.hpp"
#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <ostream>

namespace orvane {
namespace {

using manuals::Page, manuals::pages;

/// "Nov  2 2026" as 2026-11-02: the form that manual pages want.
std::string with_numbers(std::string_view date) {
    constexpr std::string_view months = "JanFebMarAprMayJunJulAugSepOctNovDec";
    const std::string month = std::to_string(months.find(date.substr(0, 3)) / 3 + 1);
    std::string numbers = std::string(date.substr(7)) + (month.size() == 1 ? "-0" : "-") + month + "-" +
                          std::string(date.substr(4, 2));
    std::replace(numbers.begin(), numbers.end(), ' ', '0');
    return numbers;
}

static_assert(std::ranges::equal(split(verb_of("manual")->arguments, "|"), pages, {}, {}, &Page::word),
              "the verb's arguments are not the pages");

} // namespace

ExitCode verb::manual(const Call& call) {
    const std::string wanted = qel::i18n::ustring_to_utf8(call.words.front());
    const Page& page = *std::ranges::find(pages, wanted, &Page::word);
    call.out << ".TH " << roff_title(page.name) << ' ' << page.section << ' '
             << with_numbers(zep_config_build_date) << " \"orvane\\-config " << zep_config_version
             << "\" \"Orvane server\"\n.SH NAME\n"
             << roff(page.name) << " \\- " << roff(page.about) << '\n';
    page.write(call.out);
    call.out << ".SH SEE ALSO\n" << page.see_also << '\n';
    return ExitCode::done;
}

} // namespace orvane
