#include "video/BitBlit.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"
#include "video/Blend.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace Quorvex::Platform::Video {

namespace {

using Pixel = Data::ColorBGRA<std::uint8_t>;
using Pixel565 = std::uint16_t;

/// The part of a blit that lies within both surfaces.
struct Clipped {
    std::int64_t sourceX;
    std::int64_t sourceY;
    std::int64_t destinationX;
    std::int64_t destinationY;
    std::int64_t width;
    std::int64_t height;
};

/// One axis: moves the beginnings to what lies within both lengths and returns how much is left.
std::int64_t ClipAxis(std::int64_t& from, std::int64_t fromLength, std::int64_t& to, std::int64_t toLength,
                      std::int64_t count) {
    const std::int64_t begin = std::max<std::int64_t>({0, -from, -to});
    const std::int64_t end = std::min({count, fromLength - from, toLength - to});
    from += begin;
    to += begin;
    return std::max<std::int64_t>(end - begin, 0);
}

Clipped Clip(const BitBlit& blit) {
    Clipped area{blit.sourceX, blit.sourceY, blit.destinationX, blit.destinationY, 0, 0};
    area.width = ClipAxis(area.sourceX, blit.source.pitch, area.destinationX, blit.destination.pitch, blit.width);
    area.height = ClipAxis(area.sourceY, std::llabs(blit.source.height), area.destinationY,
                           std::llabs(blit.destination.height), blit.height);
    return area;
}

template <class T>
T* RowOf(const BlitSurface& surface, std::int64_t y) {
    const std::int64_t row = surface.height < 0 ? -std::int64_t(surface.height) - 1 - y : y;
    return static_cast<T*>(surface.bits) + row * surface.pitch;
}

/// Calls an operation for each pair of source and destination rows, from the last one where the destination lies lower,
/// so that a surface can be moved within itself.
template <class To, class Operation>
void ForEachRow(const BitBlit& blit, const Operation& operation) {
    const Clipped area = Clip(blit);
    if (area.width == 0)
        return;
    const bool isDownward = area.destinationY > area.sourceY;
    for (std::int64_t i = 0; i < area.height; ++i) {
        const std::int64_t row = isDownward ? area.height - 1 - i : i;
        operation(RowOf<const Pixel>(blit.source, area.sourceY + row) + area.sourceX,
                  RowOf<To>(blit.destination, area.destinationY + row) + area.destinationX,
                  static_cast<std::size_t>(area.width));
    }
}

Pixel565 Reduced(Pixel color) {
    return static_cast<Pixel565>((color.red & 0xF8) << 8 | (color.green & 0xFC) << 3 | color.blue >> 3);
}

/// The high bits are repeated below, so that full intensity stays full. There is no alpha to keep.
Pixel Expanded(Pixel565 color) {
    const auto high = static_cast<std::uint8_t>(color >> 8);
    const auto middle = static_cast<std::uint8_t>(color >> 3);
    return {static_cast<std::uint8_t>(color << 3 | (color & 0x1F) >> 2),
            static_cast<std::uint8_t>((middle & 0xFC) | middle >> 6),
            static_cast<std::uint8_t>((high & 0xF8) | high >> 5), 0};
}

void BlendRow(const Pixel* source, Pixel* destination, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        destination[i] = Blend(source[i], destination[i]);
}

} // namespace

void BitBlit::Copy() const {
    ForEachRow<Pixel>(
        *this, [](const Pixel* from, Pixel* to, std::size_t count) { std::memmove(to, from, count * sizeof(Pixel)); });
}

void BitBlit::Blend() const {
    if (source.bits == destination.bits) {
        ReportProblem(__LINE__, "BitBlit: invalid Func");
        throw Exception("BitBlit: invalid Func");
    }
    ForEachRow<Pixel>(*this, BlendRow);
}

void BitBlit::CopyTo565() const {
    ForEachRow<Pixel565>(*this, [](const Pixel* from, Pixel565* to, std::size_t count) {
        std::transform(from, from + count, to, Reduced);
    });
}

void BitBlit::BlendTo565() const {
    ForEachRow<Pixel565>(*this, [](const Pixel* from, Pixel565* to, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            to[i] = Reduced(Video::Blend(from[i], Expanded(to[i])));
    });
}

} // namespace Quorvex::Platform::Video
