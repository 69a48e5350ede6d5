#include "codecs/lzw/GifLzw.h"
#include "codecs/lzw/TiffLzw.h"
#include "foundation/Exception.h"
#include "fuzz/Require.h"

#include <algorithm>
#include <vector>

using namespace ET::Img;

// The first byte is a code size, or asks for TIFF; two more bytes say how much is decoded, the rest are the codes. What
// is kept must be the beginning of the whole, whatever the room for it, and where the data end too early, or are
// damaged, nothing but zeros is written behind what was decoded.

namespace {

using Bytes = std::vector<std::uint8_t>;

template <class Decode>
bool IsWhole(const Decode& decode) {
    try {
        decode();
        return true;
    } catch (const Quorvex::Exception&) {
        return false;
    }
}

struct Decoded {
    Bytes bytes;
    bool isWhole;
};

Decoded DecodeGif(const Bytes& codes, std::uint32_t codeSize, std::uint32_t size, std::uint32_t kept) {
    Decoded decoded{Bytes(kept), false};
    decoded.isWhole =
        IsWhole([&] { DecodeGifLzw(codes.data(), codes.size(), codeSize, size, decoded.bytes.data(), kept); });
    return decoded;
}

Decoded DecodeTiff(const Bytes& codes, std::uint32_t size) {
    Decoded decoded{Bytes(size), false};
    decoded.isWhole =
        IsWhole([&] { Require(DecodeTiffLzw(codes.data(), codes.size(), decoded.bytes.data(), size) == size); });
    return decoded;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3)
        return 0;
    const std::uint32_t codeSize = data[0] % 16;
    const std::uint32_t wanted = data[1] + 256u * data[2];
    // Blocks of exactly the right size, so that the sanitizer sees a step beyond them.
    const Bytes codes(data + 3, data + size);
    if (codeSize > 11) {
        const Decoded whole = DecodeTiff(codes, wanted);
        const Decoded half = DecodeTiff(codes, wanted / 2);
        Require(half.isWhole || !whole.isWhole);
        Require(std::equal(half.bytes.begin(), half.bytes.end(), whole.bytes.begin()));
        return 0;
    }
    const Decoded whole = DecodeGif(codes, codeSize, wanted, wanted);
    for (const std::uint32_t kept : {0u, wanted / 2}) {
        const Decoded part = DecodeGif(codes, codeSize, wanted, kept);
        Require(part.isWhole == whole.isWhole);
        Require(std::equal(part.bytes.begin(), part.bytes.end(), whole.bytes.begin()));
    }
    return 0;
}
