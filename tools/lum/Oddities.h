// Where a text is read by others in another way than by Lum. What is said of each oddity stands in
// docs/oddities.json; which texts it touches is decided here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Tool {

struct Oddity {
    std::string id;    ///< Its name in docs/oddities.md.
    std::string says;  ///< What differs.
    std::string why;
};

/// Those that touch a text, in the order of the file.
std::vector<Oddity> OdditiesOf(std::string_view text);

}  // namespace Tool
