// Formats results.
#include "tools/lum/Output.h"

#include <cstddef>

#include "tools/lum/Lines.h"

namespace Tool {

void WriteJson(const nlohmann::ordered_json& object) {
    WriteLine(object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
}

std::string Row(std::string_view name, std::string_view value) {
    constexpr std::size_t nameColumns = 18;
    std::string row = "  ";
    row += name;
    if (!value.empty()) {
        row.append(nameColumns - name.size(), ' ').append(value);
    }
    return row + '\n';
}

}  // namespace Tool
