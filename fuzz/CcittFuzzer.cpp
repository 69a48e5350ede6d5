#include "codecs/tif/Ccitt.h"
#include "foundation/Exception.h"
#include "fuzz/Require.h"

#include <vector>

using namespace ET::Img;

// Two bytes for the width, one for the rows, one for the options; the rest are the codes. The same codes in the other
// order of bits must give the same rows, and the bits beside a row must be 0.

namespace {

using Bytes = std::vector<std::uint8_t>;

struct Decoded {
    Bytes rows;
    bool isWhole;

    friend bool operator==(const Decoded&, const Decoded&) = default;
};

Decoded Decode(const Bytes& codes, const CcittParameters& parameters) {
    Decoded decoded{Bytes((parameters.width + 7) / 8 * parameters.rows), false};
    try {
        const std::size_t size = decoded.rows.size();
        Require(DecodeCcitt(codes.data(), codes.size(), decoded.rows.data(), size, parameters) == size);
        decoded.isWhole = true;
    } catch (const Quorvex::Exception&) {
        // Damage: what was decoded is there.
    }
    return decoded;
}

std::uint8_t WithReversedBits(std::uint8_t byte) {
    std::uint8_t reversed = 0;
    for (int i = 0; i < 8; ++i)
        reversed |= static_cast<std::uint8_t>((byte >> i & 1) << (7 - i));
    return reversed;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 4)
        return 0;
    CcittParameters parameters{.width = (data[0] + 256u * data[1]) % 6000,
                               .rows = data[2],
                               .t4Options = data[3] & 7u,
                               .isFillOrderReversed = (data[3] & 8) != 0,
                               .isModifiedHuffman = (data[3] & 16) != 0};
    Bytes codes(data + 4, data + size);
    const Decoded decoded = Decode(codes, parameters);
    if (parameters.width % 8 != 0) {
        const std::size_t rowBytes = parameters.width / 8 + 1;
        for (std::size_t last = rowBytes - 1; last < decoded.rows.size(); last += rowBytes)
            Require((decoded.rows[last] & 0xFF >> parameters.width % 8) == 0);
    }
    for (std::uint8_t& byte : codes)
        byte = WithReversedBits(byte);
    parameters.isFillOrderReversed = !parameters.isFillOrderReversed;
    Require(decoded == Decode(codes, parameters));
    return 0;
}
