// The four pools. Made on first use and never destroyed, so that strings in static objects outlive
// every order of destruction.
#include "cstring/BufferPools.h"

constinit CFixedAlloc* _afxAlloc64 = nullptr;   // NOLINT
constinit CFixedAlloc* _afxAlloc128 = nullptr;  // NOLINT
constinit CFixedAlloc* _afxAlloc256 = nullptr;  // NOLINT
constinit CFixedAlloc* _afxAlloc512 = nullptr;  // NOLINT

namespace Lum {

CFixedAlloc* MakePool(int sizeClass) {
    constexpr unsigned int blocksPerPlex = 64;
    const auto blockSize = BlockDistance(BytesFor(CapacityOfClass(sizeClass)));
    return *kPools[sizeClass] = new CFixedAlloc(static_cast<unsigned int>(blockSize), blocksPerPlex);
}

}  // namespace Lum
