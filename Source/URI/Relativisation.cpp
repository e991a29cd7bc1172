// Makes the shortest reference that leads from a base to a URI: the inverse of resolution.
#include "Source/URI/Relativisation.h"

#include <string>
#include <string_view>
#include <utility>

#include <Lum/URI.h>

#include "Source/URI/PathSegments.h"
#include "Source/URI/Relations.h"
#include "Source/URI/UnescapedView.h"

namespace Lum {

std::string RelativePath(std::string_view target, std::string_view baseDirectory, bool caseSensitive) {
    Segments targetWalk(target);
    Segments baseWalk(baseDirectory);
    SkipCommonSegments(targetWalk, baseWalk, caseSensitive);
    const std::size_t climbs = CountSegments(baseWalk.Rest());
    PathBuilder path(false, 3 * std::uint64_t{climbs} + targetWalk.Rest().size() + 2);
    for (std::size_t i = 0; i < climbs; ++i) {
        path.Push("..");
    }
    for (; !targetWalk.AtEnd(); targetWalk.Next()) {
        path.Push(targetWalk.Current());
    }
    return path.IsEmpty() ? "./" : std::move(path).Take(HasTrailingSlash(target));
}

bool URI::MakeRelativeURI(const URI& base, bool caseSensitive) {
    if (IsRelative()) {
        return true;
    }
    if (base.IsRelative() || !IsOfType(base.GetScheme()) || !HasSameAuthority(base)) {
        return false;
    }
    // Stored and read back as any directory would be, which can change how an odd path reads.
    URI directory = base;
    directory.ChDir(".", false);
    // The answer counts for nothing; a derived class that keeps an eye on the question is asked it.
    static_cast<void>(IsDirectory());
    const UnescapedView target(m_Path);
    const UnescapedView from(directory.m_Path);
    std::string path = RelativePath(target.Get(), from.Get(), caseSensitive);
    SetParts("", "", "", std::move(path), GetQuery(true), GetFragment());
    return true;
}

}  // namespace Lum
