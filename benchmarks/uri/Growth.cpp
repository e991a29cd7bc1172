// The operations whose input has no bound, at sizes up to 10,000 segments or pairs.
//
// Paths meet in their middle, so that relating them has segments to skip, to climb and to go down.
#include <Lum/URI.h>

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Case.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

const std::vector<std::size_t> kSizes{10, 100, 1'000, 10'000};
using QueryMap = std::map<std::string, std::string>;

/// A URL of `count` segments, those from the middle on ending with `branch`.
Lum::URI Deep(std::size_t count, std::string_view branch) {
    std::string text = "http://example.org";
    for (std::size_t i = 0; i < count; ++i) {
        text += "/level" + std::to_string(i);
        if (i >= count / 2) {
            text += branch;
        }
    }
    return Lum::URI(text);
}

/// A "file" path of `count` segments behind three bytes that are kept unescaped, and that read as an
/// escape then.
Lum::URI DeepBehindOddDrive(std::size_t count) {
    Lum::URI uri("http://");
    uri.SetPath("%4|" + Deep(count, "").GetPath());
    uri.SetScheme("file");
    return uri;
}

/// A reference of `count` segments that goes up and down, on the whole down.
std::string Winding(std::size_t count) {
    constexpr std::string_view steps[] = {"..", "north", ".", "west", "..", "..", "garden", "gate", ".", "..."};
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += (i == 0 ? "" : "/");
        text += steps[i % std::size(steps)];
    }
    return text;
}

/// `count` pairs, not in the order of their keys.
std::vector<QueryPair> ManyPairs(std::size_t count) {
    // A prime that divides none of the sizes: every number turns up once.
    constexpr std::size_t step = 7919;
    std::vector<QueryPair> pairs;
    for (std::size_t i = 0; i < count; ++i) {
        pairs.emplace_back("key" + std::to_string(i * step % count), "value " + std::to_string(i));
    }
    return pairs;
}

QueryMap FillMap(const std::vector<QueryPair>& pairs) {
    QueryMap map;
    for (const auto& [key, value] : pairs) {
        map.insert_or_assign(key, value);
    }
    return map;
}

Lum::URI ManyPairsUri(std::size_t count) {
    std::string text = "http://example.org/";
    for (const auto& [key, value] : ManyPairs(count)) {
        text += text.ends_with('/') ? '?' : '&';
        text += key + "=value+" + value.substr(value.find(' ') + 1);
    }
    return Lum::URI(text);
}

void AddPathGrowth() {
    AddGrowthCases("uri/growth of ChDir", kSizes, [](std::size_t size) {
        return [base = Deep(size, ""), reference = Winding(size), target = Lum::URI()]() mutable -> const Lum::URI& {
            target = base;
            target.ChDir(reference, false);
            return target;
        };
    });
    AddGrowthCases("uri/growth of GetRelation", kSizes, [](std::size_t size) {
        return [a = Deep(size, ""), b = Deep(size, "")] { return a.GetRelation(b, true); };
    });
    AddGrowthCases("uri/growth of MakeRelativeURI", kSizes, [](std::size_t size) {
        return [base = Deep(size, "east"), uri = Deep(size, "west"), target = Lum::URI()]() mutable -> const Lum::URI& {
            target = uri;
            target.MakeRelativeURI(base, true);
            return target;
        };
    });
    AddGrowthCases("uri/growth of MakeRelativeURI, escapes", kSizes, [](std::size_t size) {
        return [base = Deep(size, "%20east"), uri = Deep(size, "%20west"),
                target = Lum::URI()]() mutable -> const Lum::URI& {
            target = uri;
            target.MakeRelativeURI(base, true);
            return target;
        };
    });
    AddGrowthCases("uri/growth of IsUnderDirectory", kSizes, [](std::size_t size) {
        return [uri = Deep(size, "")] { return uri.IsUnderDirectory("another place"); };
    });
    AddGrowthCases("uri/growth of SplitPath and JoinPath", kSizes, [](std::size_t size) {
        return [path = Deep(size, "").GetPath()] {
            std::vector<std::string> segments;
            Lum::URI::SplitPath(path, segments);
            return Lum::URI::JoinPath(segments, true, false);
        };
    });
    AddGrowthCases("uri/growth of NormalizeEncoding", kSizes, [](std::size_t size) {
        return [path = Deep(size, "%A0").ToString(false)] {
            std::string text = path;
            Lum::URI::NormalizeEncoding(text, "iso-8859-1");
            return text;
        };
    });
    AddGrowthCases("uri/growth of GetCommonParent", kSizes, [](std::size_t size) {
        return [a = Deep(size, "east"), b = Deep(size, "west")] { return a.GetCommonParent(b, true); };
    });
    AddGrowthCases("uri/growth of GetCommonParent, odd drive", kSizes, [](std::size_t size) {
        return [a = DeepBehindOddDrive(size), b = Lum::URI("file:///other")] { return a.GetCommonParent(b, true); };
    });
}

void AddQueryGrowth() {
    AddGrowthCases("uri/growth of GetQueryByMap", kSizes, [](std::size_t size) {
        return [uri = ManyPairsUri(size)] {
            QueryMap map;
            uri.GetQueryByMap(map);
            return map;
        };
    });
    AddGrowthCases("uri/growth of filling a std::map", kSizes,
                   [](std::size_t size) { return [pairs = ManyPairs(size)] { return FillMap(pairs); }; });
    AddGrowthCases("uri/growth of SetQueryByMap", kSizes, [](std::size_t size) {
        return [map = FillMap(ManyPairs(size)), uri = Lum::URI("http://example.org/")]() mutable -> const Lum::URI& {
            uri.SetQueryByMap(map);
            return uri;
        };
    });
    AddGrowthCases("uri/growth of SetQueryValue", kSizes, [](std::size_t size) {
        return [uri = ManyPairsUri(size)]() mutable -> const Lum::URI& {
            uri.SetQueryValue("key5", "a value");
            return uri;
        };
    });
    AddGrowthCases("uri/growth of GetQueryValue", kSizes, [](std::size_t size) {
        return [uri = ManyPairsUri(size), value = std::string()]() mutable { return uri.GetQueryValue("key5", value); };
    });
}

}  // namespace

void AddGrowth() {
    AddPathGrowth();
    AddQueryGrowth();
}

}  // namespace Bench::Uri
