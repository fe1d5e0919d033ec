// Why there is no answer, for programs.
#include "printing/json.hpp"
#include "printing/json_parts.hpp"

namespace orvane {

std::string error_json(int code, const std::string& text) {
    return answer_of({{"format", json_format}, {"error", json_text(text)}, {"code", code}});
}

} // namespace orvane
