// What is resolved: the references of RFC 2396, appendix C, and such as stand in a page of the web.
#include <string>
#include <vector>

#include "Inputs.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

/// C.1 up to "../../g", then C.2, which begins with the empty reference.
const std::vector<std::string>& AppendixC() {
    static const std::vector<std::string> references{
        "g:h", "g", "./g", "g/", "/g", "//g", "?y", "g?y", "#s", "g#s", "g?y#s", ";x", "g;x", "g;x?y#s", ".", "./",
        "..", "../", "../g", "../..", "../../", "../../g",
        //
        "", "../../../g", "../../../../g", "/./g", "/../g", "g.", ".g", "g..", "..g", "./../g", "./g/.", "g/./h",
        "g/../h", "g;x=1/./y", "g;x=1/../y", "g?y/./x", "g?y/../x", "g#s/./x", "g#s/../x", "http:g"};
    return references;
}

const char* const kPageReferences =
    R"(/favicon.ico
/apple-touch-icon.png
/manifest.webmanifest
/magazine/feed.xml
https://www.example.com/magazine/2023/05/walking-the-coast-path.html
//cdn.example.net/lib/normalize/8.0.1/normalize.min.css
//cdn.example.net/fonts/inter/regular.woff2
//fonts.example.org/css2?family=Inter:wght@400;700&display=swap
../../css/main.3f9a1c.css
../../css/print.css
../css/may.css
article.css
//cdn.example.net/x.js
//cdn.example.net/lib/lightbox/2.11.3/lightbox.min.js
../../js/vendor.bundle.js?v=20230504
../../js/site.js?v=20230504
https://stats.example.org/collect.js?site=4471
#content
#top
/
/magazine/
/magazine/archive
/magazine/2023/
/magazine/2023/05/
/search
/search?q=1
/search?q=coast%20path&sort=date
/account/login?return=%2Fmagazine%2F2023%2F05%2Fwalking-the-coast-path.html
/account/register
/cart
/shop/
/shop/maps?scale=25000
/shop/boots/
/about
/about/contact
/about/jobs#editor
/help/subscriptions#cancel
https://shop.example.com/
https://shop.example.com/products/maps/coast-path-west
https://shop.example.com/products/maps/coast-path-west?colour=blue#reviews
https://en.encyclopedia.example/wiki/Coast_path
https://en.encyclopedia.example/wiki/Coast_path#History
https://weather.example.org/forecast?lat=50.1186&lon=-5.5371
https://www.ferry.example/timetable
https://www.ferry.example/timetable?season=summer&lang=en
http://tides.example.net/
http://tides.example.net/ports/newlyn.html
img/x.png
img/header.jpg
img/header-small.jpg
img/map-of-the-path.svg
img/day-1/harbour.jpg
img/day-1/lighthouse.jpg
img/day-1/old%20bridge.jpg
img/day-2/beach%20at%20low%20tide.jpg
img/day-2/chapel.jpg
img/day-3/tin-mine.jpg
img/day-3/tin-mine.jpg?width=1200
../04/img/preview.jpg
../06/img/preview.jpg
../../img/logo.png
../../img/icons/arrow-left.svg
../../img/icons/arrow-right.svg
../../img/authors/maria.jpg
/img/spacer.gif
/img/banner/boots-300x250.png?c=8812
//images.example.com/thumb/3/3f/Lighthouse.jpg/320px-Lighthouse.jpg
//images.example.com/thumb/9/9a/Tin_mine.jpg/320px-Tin_mine.jpg
https://images.example.com/photos/1920x1080/harbour-at-dawn.jpg
https://images.example.com/photos/1920x1080/cliffs%20in%20fog.jpg
#day-1
#day-2
#day-3
#getting-there
#where-to-stay
#comments
#comment-10442
#comment-10443
#comment-10458
?page=2
?page=3
?page=2#comments
?print=1
?lang=fr
?sort=oldest&page=4
walking-the-coast-path-2.html
walking-the-coast-path-3.html
walking-the-coast-path-2.html#map
packing-list.html
packing-list.pdf
tide-tables.html?port=newlyn
./
./packing-list.html#shoes
..
../
../04/
../04/a-weekend-in-the-dales.html
../04/cycling-the-canal.html#day-2
../06/
../06/islands-by-kayak.html
../../2022/
../../2022/11/winter-walks.html
../../2022/08/camping%20with%20children.html
../../authors/maria
../../authors/maria?page=2
../../tags/coast
../../tags/walking?order=popular
../../../about/
gpx/day-1.gpx
gpx/day-2.gpx
gpx/day-3.gpx
gpx/whole%20walk.gpx
/downloads/maps/sheet-102.pdf
/downloads/maps/sheet-103.pdf
/downloads/maps/sheet%20102%20%28large%29.pdf
/magazine/2023/05/comments.json?after=10458
/magazine/2023/05/walking-the-coast-path.html?share=1
/api/v2/articles/7781/related?limit=5
/api/v2/articles/7781/likes
/rss?section=magazine
/magazine/tags/coast
/magazine/tags/coast?page=2
/magazine/tags/family%20walks
/magazine/2021/07/the-moor-in-summer.html
/magazine/2020/09/harvest-on-the-island.html#recipes
mailto:editor@magazine.example
mailto:editor@magazine.example?subject=Walking%20the%20coast%20path
https://social.example/share?url=https%3A%2F%2Fwww.example.com%2Fmagazine%2F2023%2F05%2F&title=Walking
https://photos.example.net/maria/sets/72157600/
https://video.example.net/watch?v=4aawyAB9vmq&t=92
//video.example.net/embed/4aawyAB9vmq
//ads.example.net/serve?zone=14&w=300&h=250
//ads.example.net/click/8812?to=boots
https://booking.example.com/hotels/newlyn?checkin=2023-06-10&checkout=2023-06-12&guests=2
https://booking.example.com/hotels/the-old-pier-inn
https://forum.example.org/t/coast-path-in-june/2217
https://forum.example.org/t/coast-path-in-june/2217/14#post-14
https://buses.example.org/routes/coaster?stop=Newlyn%20Bridge
https://buses.example.org/routes/coaster.pdf
https://www.hostels.example/st-just
https://licences.example/free/4.0/
/legal/privacy
/legal/terms#cookies
/legal/imprint
/sitemap.xml
https://status.example.com/
https://m.example.com/magazine/2023/05/walking-the-coast-path.html
)";

}  // namespace

std::vector<ResolveCase> ResolveCases() {
    return {
        {"uri/resolve appendix C", "uri/resolve appendix C reused", "uri/make absolute appendix C",
         "http://a/b/c/d;p?q", AppendixC()},
        {"uri/resolve page references", "uri/resolve page references reused", "uri/make absolute page references",
         "https://www.example.com/magazine/2023/05/walking-the-coast-path.html?from=front", Lines(kPageReferences)}};
}

std::vector<Neighbours> NeighboursOf(const std::vector<std::string>& urls) {
    std::vector<Neighbours> neighbours;
    for (const std::string& url : urls) {
        const std::size_t authority = url.find("//");
        const std::size_t path = authority == std::string::npos ? authority : url.find('/', authority + 2);
        if (path == std::string::npos) {
            continue;
        }
        const std::size_t pathEnd = std::min(url.find_first_of("?#"), url.size());
        std::size_t folderEnd = pathEnd;
        for (std::size_t up = neighbours.size() % 3 + 1; up > 0 && folderEnd > path + 1; --up) {
            folderEnd = url.rfind('/', folderEnd - 2);
            folderEnd = folderEnd == std::string::npos || folderEnd < path ? path + 1 : folderEnd + 1;
        }
        neighbours.push_back({url, url.substr(0, folderEnd) + "archive/notes-" +
                                       std::to_string(neighbours.size() % 100) + ".html?page=2#top"});
    }
    return neighbours;
}

}  // namespace Bench::Uri
