// Property: a table of any bytes is either read or explained. A number that is not in the table loads its own
// decimal text.
#include <Lum/CString.h>
#include <Lum/Platform.h>
#include <Lum/StringResources.h>

#include "fuzz/Fuzz.h"
#include "tests/Resources/Files.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Files::Folder folder;
    Files::Write(folder / "Localizable.strings", {reinterpret_cast<const char*>(data), size});
    Lum::Platform::SetMainBundle(folder.Path());
    gStrResTableInited = false;
    const bool isTable = Lum::Platform::ExplainStringTable("").empty();
    for (int number = 1; number < 4; ++number) {
        CString text;
        const bool isFound = text.LoadString(number);
        Require(isFound != text.IsEmpty());
        Require(isTable || text.GetIntValue() == number);
    }
    return 0;
}
