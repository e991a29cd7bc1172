// Property: a map written to a query and read again is the same map, a value set is the value read and the map changed,
// and reading one value agrees with reading the map.
#include <map>
#include <string>

#include <Lum/URI.h>

#include "fuzz/Fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    Lum::URI uri("http://h/");
    uri.SetQuery(text, false);
    std::map<std::string, std::string> pairs;
    uri.GetQueryByMap(pairs);
    for (const auto& [key, value] : pairs) {
        std::string read;
        Require(uri.GetQueryValue(key, read) && read == value);
    }
    uri.SetQueryByMap(pairs);
    std::map<std::string, std::string> again;
    uri.GetQueryByMap(again);
    Require(again == pairs);

    const std::string key = text.substr(0, size / 2);
    Lum::URI changed("http://h/");
    changed.SetQuery(text, false);
    changed.SetQueryValue(key, text);
    uri.SetQueryValue(key, text);
    Require(changed == uri);
    again[key] = text;
    uri.SetQueryByMap(again);
    Require(changed == uri);
    std::string value;
    Require(uri.GetQueryValue(key, value) && value == text);
    return 0;
}
