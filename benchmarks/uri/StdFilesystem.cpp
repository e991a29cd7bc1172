// std::filesystem: the name and the extension of a path.
#include <Lum/URI.h>

#include <filesystem>
#include <string>

#include "Case.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

std::filesystem::path PathOf(const std::string& url) { return Lum::URI(url).GetPath(); }

LastName<std::string> NameAndExtension(const std::filesystem::path& path) {
    return {path.filename().string(), path.extension().string()};
}

void AddCases(const std::string& name, const Inputs& inputs) {
    AddPreparedCase(kNameAndExtension, name, inputs.accepted, PathOf, NameAndExtension);
}

const AddSubject add{{"std::filesystem", nullptr, nullptr, AddCases}};

}  // namespace
}  // namespace Bench::Uri
