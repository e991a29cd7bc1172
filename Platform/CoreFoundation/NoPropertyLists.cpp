// Takes the place of what reads tables that are property lists, in a build without libplist. Other tables are read.
#include "Platform/CoreFoundation/StringTable.h"

namespace Lum::Internal::CoreFoundation {
namespace {

constexpr const char* kProblem = "a property list, which this build does not read";

}  // namespace

std::string ReadXmlTable(std::string_view /*bytes*/, StringTable& /*table*/) { return kProblem; }

std::string ReadBinaryTable(std::string_view /*bytes*/, StringTable& /*table*/) { return kProblem; }

}  // namespace Lum::Internal::CoreFoundation
