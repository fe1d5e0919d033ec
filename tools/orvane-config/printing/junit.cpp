// Remarks as the results of tests.
#include "printing/remarks.hpp"
#include "text/invisible.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <string_view>

namespace orvane {
namespace {

/// XML has no notation for control characters, nor for these two
/// non-characters.
std::string xml(const std::string& text) {
    std::u16string escaped;
    for (const char16_t unit : with_codes(qel::i18n::utf8_to_ustring(text), u"\n")) {
        constexpr std::u16string_view marks = u"&<>\"", names[] = {u"&amp;", u"&lt;", u"&gt;", u"&quot;"};
        const std::size_t mark = marks.find(unit);
        if (mark != marks.npos)
            escaped += names[mark];
        else
            escaped += unit < 0xFFFE ? std::u16string(1, unit) : code_of(unit);
    }
    return qel::i18n::ustring_to_utf8(escaped);
}

std::string attribute(std::string_view name, const std::string& value) {
    return std::string(" ").append(name).append("=\"").append(xml(value)).append("\"");
}

struct Counts {
    std::size_t tests = 0, failures = 0, errors = 0, skipped = 0;
};

std::string to_text(const Counts& counts) {
    return attribute("tests", std::to_string(counts.tests)) +
           attribute("failures", std::to_string(counts.failures)) +
           attribute("errors", std::to_string(counts.errors)) +
           attribute("skipped", std::to_string(counts.skipped));
}

/// What is inside of the element of a case.
std::string outcome(const Case& one, bool strict, Counts& counts) {
    ++counts.tests;
    if (!one.looked_at) {
        ++counts.skipped;
        return "<skipped message=\"not looked at\"/>";
    }
    if (one.remarks.empty()) return "";
    const std::string text = xml(to_gcc({one}));
    const auto fails = [&](const Remark& said) { return said.level == "error" || strict; };
    const auto first = std::ranges::find_if(one.remarks, fails);
    if (first == one.remarks.end()) return "<system-out>" + text + "</system-out>";
    const bool unread = first->id.empty();
    ++(unread ? counts.errors : counts.failures);
    const std::string element = unread ? "error" : "failure";
    return "<" + element + attribute("message", first->text) + attribute("type", std::string(first->id)) +
           ">" + text + "</" + element + ">";
}

} // namespace

std::string to_junit(const std::string& suite, const std::vector<Case>& cases, bool strict) {
    Counts counts;
    std::string tests;
    for (const Case& one : cases) {
        tests.append("<testcase").append(attribute("classname", suite)).append(attribute("name", one.name));
        tests.append(">").append(outcome(one, strict, counts)).append("</testcase>\n");
    }
    const std::string counted = to_text(counts);
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites" + counted + ">\n<testsuite" +
           attribute("name", suite) + counted + ">\n" + tests + "</testsuite>\n</testsuites>\n";
}

} // namespace orvane
