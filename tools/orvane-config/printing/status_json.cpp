// The state of runtime files, for programs.
#include "printing/json.hpp"
#include "printing/json_parts.hpp"
#include "runtime/runtime_state.hpp"

namespace orvane {

std::string status_json(const std::vector<FileReport>& files) {
    boost::json::array entries;
    for (const FileReport& file : files) {
        boost::json::object entry{{"name", file.name},
                                  {"path", json_text(file.path.text())},
                                  {"state", to_text(file.state)},
                                  {"text", json_text(file.text)}};
        if (file.pid != 0) entry["pid"] = file.pid;
        if (!file.program.empty()) entry["program"] = json_text(file.program);
        if (file.expected_port != 0) entry["expected_port"] = file.expected_port;
        entries.push_back(std::move(entry));
    }
    return answer_of(
        {{"format", json_format}, {"state", to_text(worst_of(files))}, {"files", std::move(entries)}});
}

} // namespace orvane
