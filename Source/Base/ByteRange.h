// A closed range of byte values, taken unsigned.
#pragma once

namespace Lum {

struct ByteRange {
    unsigned char low = 0;
    unsigned char high = 0;
};

}  // namespace Lum
