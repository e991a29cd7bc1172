// Property: every text is a local path of each style and a URI with or without local paths; a Windows
// path with a drive or without comes back as it was written.
#include <string>

#include <Lum/URI.h>

#include "fuzz/Fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    using Lum::URI;
    for (const auto from : {&URI::LocalPathToURIWin, &URI::LocalPathToURIUnix, &URI::LocalPathToURIMac}) {
        URI uri;
        (uri.*from)(text);
        Require(uri.IsOfType("file") && uri.GetQuery(false).empty());
        for (const auto to : {&URI::ToLocalPathWin, &URI::ToLocalPathUnix, &URI::ToLocalPathMac}) {
            (void)(uri.*to)();
        }
    }
    (void)URI("file://localhost/" + text).ToLocalPathMac();
    (void)URI(text).ToLocalPathUnix();

    URI windows;
    windows.LocalPathToURIWin(text);
    const std::string path = windows.ToLocalPathWin();
    windows.LocalPathToURIWin(path);
    Require(path.empty() || path.front() == '\\' || windows.ToLocalPathWin() == path);
    return 0;
}
