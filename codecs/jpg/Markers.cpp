#include "codecs/jpg/Markers.h"

#include "foundation/Exception.h"

#include <cstdio>

namespace ET::Img::Jpg::Marker {

namespace {

struct Refusal {
    std::uint8_t marker;
    const char* text;
};

constexpr Refusal refusedFrames[] = {
    {0xC1, "SOF01 Extended sequential DCT with Huffman coding is not supported"},
    {0xC5, "SOF05 Differential sequential DCT with Huffman coding is not supported"},
    {0xC6, "SOF06 Differential progressive DCT with Huffman coding is not supported"},
    {0xC7, "SOF07 Differential lossless (sequential) with Huffman coding is not supported"},
    {0xC9, "SOF09 Extended sequential DCT with arithmetic coding is not supported"},
    {0xCA, "SOF10 Progressive DCT with arithmetic coding is not supported"},
    {0xCB, "SOF11 Lossless (sequential) with arithmetic coding is not supported"},
    {0xCD, "SOF13 Differential sequential DCT with arithmetic coding is not supported"},
    {0xCE, "SOF14 Differential progressive DCT with arithmetic coding is not supported"},
    {0xCF, "SOF15 Differential lossless (sequential) with arithmetic coding is not supported"},
};

Quorvex::String Hexadecimal(unsigned number) {
    char text[16];
    std::snprintf(text, sizeof(text), "%X", number);
    return Quorvex::String(text);
}

Quorvex::String UnexpectedText(std::uint8_t marker, const char* meaning, std::uint32_t offset) {
    return Quorvex::String("Unexpected marker X'FF") + Hexadecimal(marker) + "'" + meaning + " at offset 0x" +
           Hexadecimal(offset);
}

} // namespace

Quorvex::String ExpectedText(std::uint32_t offset) {
    return Quorvex::String("Expected marker X'FF' at offset 0x") + Hexadecimal(offset);
}

void RefuseUnsupported(std::uint8_t marker, std::uint32_t offset) {
    for (const Refusal& refusal : refusedFrames)
        if (refusal.marker == marker)
            throw Quorvex::Exception(refusal.text);
    if (marker == startOfImage)
        throw Quorvex::Exception(UnexpectedText(marker, " (Start Of Image)", offset));
    if (marker > firstRestart && marker < startOfImage)
        throw Quorvex::Exception(UnexpectedText(marker, "", offset));
}

} // namespace ET::Img::Jpg::Marker
