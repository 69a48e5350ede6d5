#include "video/software/SoftwareResampling.h"

#include "foundation/Report.h"
#include "video/BitBlit.h"
#include "video/software/SoftwareContext.h"

#include <algorithm>
#include <cstdlib>

namespace Quorvex::Platform::Video::Software {

namespace {

struct PixelFormat {
    std::int32_t bytesPerPixel;
    const char* bitsProblem;
    const char* pitchProblem;
    void (BitBlit::*copy)() const;
    void (BitBlit::*blend)() const;
};

/// Null for a format that this backend does not draw into.
const PixelFormat* FindFormat(BufferFormat format) {
    static constexpr PixelFormat bgra{4, "pBits%4!=0", "Pitch%4!=0", &BitBlit::Copy, &BitBlit::Blend};
    static constexpr PixelFormat bgr565{2, "pBits%2!=0", "Pitch%2!=0", &BitBlit::CopyTo565, &BitBlit::BlendTo565};
    switch (format) {
    case BufferFormat::BGRA32:
    case BufferFormat::BGRX32:
        return &bgra;
    case BufferFormat::BGR565:
        return &bgr565;
    default:
        return nullptr;
    }
}

void Require(bool condition, int line, const char* problem) {
    if (condition)
        return;
    ReportProblem(line, problem);
    throw Exception(problem);
}

BlitSurface WholeSurface(const PixelTarget& target) {
    return {target.bits, TruncateToInt32(target.width), TruncateToInt32(target.height)};
}

/// The rectangle as it lies in the window's own pixels. A number stays at the end of its range.
ImageRect Moved(const ImageRect& rect, std::int32_t dx, std::int32_t dy) {
    ImageRect moved = rect;
    const auto move = [](std::int32_t& value, std::int32_t distance) {
        value = TruncateToInt32(static_cast<double>(value) + distance);
    };
    move(moved.x0, dx);
    move(moved.x1, dx);
    move(moved.y0, dy);
    move(moved.y1, dy);
    return moved;
}

/// Rows that only move sideways do not touch each other.
void MoveSideways(RowWorkers& workers, const BitBlit& move) {
    constexpr std::int32_t bandRows = 64;
    constexpr std::int64_t pixelsWorthAThread = 262144;
    const std::int32_t bands = (move.height + bandRows - 1) / bandRows;
    const bool isWorthThreads = std::int64_t(move.width) * move.height >= pixelsWorthAThread;
    workers.Run(static_cast<std::uint32_t>(bands), isWorthThreads ? workers.LargestCount() : 1,
                [&](std::uint32_t, std::uint32_t unit) {
                    const std::int32_t begin = static_cast<std::int32_t>(unit) * bandRows;
                    BitBlit band = move;
                    band.sourceY += begin;
                    band.destinationY += begin;
                    band.height = std::min(bandRows, move.height - begin);
                    band.Copy();
                });
}

bool HasSameExtent(std::int32_t a0, std::int32_t a1, std::int32_t b0, std::int32_t b1) {
    return std::int64_t{a1} - a0 == std::int64_t{b1} - b0;
}

} // namespace

void SoftwareResampling::Draw(Renderer& renderer, const SharedPtr<Data::ImageBase>& image, const ImageRect& rect) {
    const SharedPtr<Renderer::Lock> lock = renderer.LockColorBuffer();
    const PixelFormat* const format = FindFormat(lock->Format());
    if (format == nullptr || !image)
        return;
    Require(reinterpret_cast<std::uintptr_t>(lock->WriteBits()) % unsigned(format->bytesPerPixel) == 0, __LINE__,
            format->bitsProblem);
    Require(lock->WritePitch() % format->bytesPerPixel == 0, __LINE__, format->pitchProblem);

    // The buffer shows the window's own pixels. What the renderer moves everything by belongs to the position, so that
    // an image keeps its right border in a child window too.
    const Context& context = *renderer.GetContext();
    const ImageRect placed = Moved(rect, context.translateX, context.translateY);
    UpdateScaledBuffer(*image, placed, renderer.GetWidth(), renderer.GetHeight());

    const PixelRegion shown = Intersection(
        Normalized(placed), {0, 0, TruncateToInt32(renderer.GetWidth()), TruncateToInt32(renderer.GetHeight())});
    if (shown.IsEmpty())
        return;
    const PixelTarget scaled{scaledBuffer->GetBits(), scaledBuffer->GetWidth(), scaledBuffer->GetHeight()};
    const BlitSurface window{lock->WriteBits(), lock->WritePitch() / format->bytesPerPixel, lock->Height()};
    const BitBlit blit{
        WholeSurface(scaled),    window, shown.left, shown.top, shown.left, shown.top, shown.right - shown.left,
        shown.bottom - shown.top};
    (blit.*(context.blendingEnabled ? format->blend : format->copy))();
}

void SoftwareResampling::UpdateScaledBuffer(const Data::ImageBase& image, const ImageRect& rect, std::uint32_t width,
                                            std::uint32_t height) {
    // Whoever fails below leaves no buffer behind that claims to show the rectangle.
    SharedPtr<OffscreenBuffer> buffer = std::move(scaledBuffer);
    scaledBuffer.reset();
    const bool isRightSize = buffer && buffer->GetWidth() == width && buffer->GetHeight() == height;
    if (!isRightSize) {
        const SharedPtr<SoftwareContext> context = MakeShared<SoftwareContext>();
        buffer.reset();
        buffer = context->CreateOffscreenBuffer(width, height);
    }
    const PixelTarget target{buffer->GetBits(), width, height};
    const bool isSamePlace = rect.x0 == cachedRect.x0 && rect.y0 == cachedRect.y0;
    if (!isRightSize || !IsScroll(rect))
        resampling.Render(target, image, rect, target.Whole());
    else if (!isSamePlace)
        Scroll(target, image, rect);
    cachedRect = rect;
    scaledBuffer = std::move(buffer);
}

bool SoftwareResampling::IsScroll(const ImageRect& rect) const {
    return rect.unchanged && rect.rotation == cachedRect.rotation && rect.mode == cachedRect.mode &&
           HasSameExtent(rect.x0, rect.x1, cachedRect.x0, cachedRect.x1) &&
           HasSameExtent(rect.y0, rect.y1, cachedRect.y0, cachedRect.y1);
}

void SoftwareResampling::Scroll(const PixelTarget& target, const Data::ImageBase& image, const ImageRect& rect) {
    const PixelRegion whole = target.Whole();
    const std::int64_t dx = std::int64_t{cachedRect.x0} - rect.x0;
    const std::int64_t dy = std::int64_t{cachedRect.y0} - rect.y0;
    if (std::llabs(dx) >= whole.right || std::llabs(dy) >= whole.bottom)
        return resampling.Render(target, image, rect, whole);

    // Only what the image covers is worth moving.
    const auto moveX = static_cast<std::int32_t>(dx), moveY = static_cast<std::int32_t>(dy);
    const PixelRegion covered = Intersection(Normalized(rect), whole);
    const BlitSurface surface = WholeSurface(target);
    const BitBlit move{surface,      surface,     covered.left + moveX,         covered.top + moveY,
                       covered.left, covered.top, covered.right - covered.left, covered.bottom - covered.top};
    if (moveY == 0)
        MoveSideways(resampling.GetWorkers(), move);
    else
        move.Copy();

    // Rows come into view at one side and columns at another; the columns leave out what the rows cover.
    PixelRegion kept = whole;
    PixelRegion newRows = whole;
    if (moveY > 0)
        kept.bottom = newRows.top = whole.bottom - moveY;
    else
        kept.top = newRows.bottom = -moveY;
    PixelRegion newColumns = kept;
    if (moveX > 0)
        newColumns.left = whole.right - moveX;
    else
        newColumns.right = -moveX;
    resampling.Render(target, image, rect, newRows);
    resampling.Render(target, image, rect, newColumns);
}

} // namespace Quorvex::Platform::Video::Software
