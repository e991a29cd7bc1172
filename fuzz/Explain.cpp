// Property: ExplainURI finds a fault exactly where IsValidURI answers false, and inside the text.
#include <string>
#include <string_view>

#include <Lum/URI.h>

#include "Fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const Lum::URIProblem problem = Lum::ExplainURI(text);
    Require((problem.code == Lum::URIProblemCode::kValid) == Lum::URI(text).IsValidURI());
    Require(problem.offset <= size && problem.length <= size - problem.offset);
    return 0;
}
