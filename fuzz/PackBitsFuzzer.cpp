#include "codecs/tif/PackBits.h"
#include "foundation/Exception.h"

#include <cstring>
#include <memory>
#include <vector>

// The first two bytes are the size of the target. What is decoded must not depend on what was there before, and nothing
// behind the place where decoding ended may be touched.

namespace {

struct Outcome {
    std::vector<std::uint8_t> target;
    bool isWhole = true;
};

Outcome Decode(const std::uint8_t* source, std::size_t sourceSize, std::size_t targetSize, std::uint8_t background) {
    // Of exactly the size, so that the sanitizer sees a write past the end.
    const std::unique_ptr<std::uint8_t[]> memory(new std::uint8_t[targetSize]);
    std::memset(memory.get(), background, targetSize);
    Outcome outcome;
    try {
        ET::Img::Tif::DecodePackBits(source, sourceSize, memory.get(), targetSize);
    } catch (const Quorvex::Exception&) {
        outcome.isWhole = false;
    }
    outcome.target.assign(memory.get(), memory.get() + targetSize);
    return outcome;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2)
        return 0;
    const std::size_t targetSize = (std::size_t{data[0]} << 8 | data[1]) + 1;
    const Outcome one = Decode(data + 2, size - 2, targetSize, 0x5A),
                  other = Decode(data + 2, size - 2, targetSize, 0xA5);
    std::size_t same = 0;
    while (same < targetSize && one.target[same] == other.target[same])
        ++same;
    bool isSound = one.isWhole == other.isWhole && (!one.isWhole || same == targetSize);
    for (std::size_t i = same; i < targetSize; ++i)
        isSound = isSound && one.target[i] == 0x5A && other.target[i] == 0xA5;
    if (!isSound)
        __builtin_trap();
    return 0;
}
