#include "data/ImageBase.h"

#include "data/Dispatch.h"
#include "foundation/Report.h"

#include <algorithm>
#include <cmath>

namespace Quorvex::Data {

ImageBase::ImageBase(ColorTypeEnum::Value type)
    : ColorTypeEnum(type), UserRepresentation(new DefaultImageUserRepresentation(type)) {}

ImageBase::~ImageBase() = default;

// The grey messages are shared by both forms of a lock; the colour ones tell them apart.
#define QUORVEX_LOCK(value, name, sample)                                                                              \
    Lock<const sample> ImageBase::Lock##name(LockMode) const {                                                         \
        throw Exception(value < 10 ? "Lock" #name " is not implemented" : "Lock" #name " const is not implemented");   \
    }                                                                                                                  \
    Lock<sample> ImageBase::Lock##name(LockMode) {                                                                     \
        throw Exception("Lock" #name " is not implemented");                                                           \
    }
QUORVEX_SAMPLE_TYPES(QUORVEX_LOCK)
#undef QUORVEX_LOCK

const char* ImageBase::TypeTag() const {
    static const char tag[] = "ImageBase";
    return tag;
}

void ImageBase::OnUnlocked() const {}

LockBase::LockBase(const ImageBase& owner, LockMode mode)
    : Mode(mode), Owner(&owner), Width(owner.GetWidth()), Height(owner.GetHeight()),
      AllocatedWidth(owner.AllocatedWidth), AllocatedHeight(owner.AllocatedHeight) {
    const bool excluded = owner.WriteLockCount != 0 || (mode != LockMode::ReadOnly && owner.LockCount != 0);
    if (excluded) {
        ReportProblem(__LINE__, "Image::Lock");
        throw Exception();
    }
    ++owner.LockCount;
    if (mode != LockMode::ReadOnly)
        ++owner.WriteLockCount;
}

LockBase::~LockBase() {
    --Owner->LockCount;
    if (Mode != LockMode::ReadOnly)
        --Owner->WriteLockCount;
    if (Owner->LockCount == 0 && Owner->WriteLockCount == 0)
        Owner->OnUnlocked();
}

void LockBase::CheckIndex(std::uint32_t x, std::uint32_t y) const {
    if (x >= AllocatedWidth || y >= AllocatedHeight)
        throw Exception();
}

namespace {

template <class Sample>
void FillVisible(const Lock<Sample>& pixels, Sample value) {
    if (pixels.Width == 0)
        return;
    for (std::uint32_t y = 0; y < pixels.Height; ++y) {
        Sample* const last = &pixels(pixels.Width - 1, y);
        std::fill(last - (pixels.Width - 1), last + 1, value);
    }
}

/// Replicates one pixel or two, as many as there is room for right of the visible width, in all rows in memory.
template <class Sample>
void ReplicateLastColumn(const Lock<Sample>& pixels) {
    const std::uint32_t copies = std::min(pixels.AllocatedWidth - pixels.Width, 2u);
    if (copies == 0)
        return; // Rows without pixels take no memory, and a header may claim any number of them.
    for (std::uint32_t y = 0; y < pixels.AllocatedHeight; ++y)
        for (std::uint32_t i = 0; i < copies; ++i)
            pixels(pixels.Width + i, y) = pixels(pixels.Width - 1, y);
}

template <class Sample>
void ReplicateLastRow(const Lock<Sample>& pixels) {
    const std::uint32_t copies = std::min(pixels.AllocatedHeight - pixels.Height, 2u);
    if (copies == 0)
        return;
    for (std::uint32_t x = 0; x < pixels.AllocatedWidth; ++x)
        for (std::uint32_t i = 0; i < copies; ++i)
            pixels(x, pixels.Height + i) = pixels(x, pixels.Height - 1);
}

} // namespace

void ImageBase::clear(std::int32_t value) {
    constexpr const char* failure = "Data::ImageBase::clear: unknown color type";
    Dispatch(ColorType, failure, [&](auto tag) {
        using Tag = decltype(tag);
        using Channel = typename Tag::Channel;
        if constexpr (std::is_floating_point_v<Channel>) {
            throw Exception(failure);
        } else {
            const auto channel = static_cast<Channel>(value);
            typename Tag::Sample sample{};
            if constexpr (Tag::Traits::isColor)
                sample = {channel, channel, channel, channel};
            else
                sample = channel;
            FillVisible(Tag::Traits::LockIn(*this, LockMode::ReadWrite), sample);
        }
    });
}

void ImageBase::PaintBorder() {
    Dispatch(ColorType, "Data::ImageBase::PaintBorder: unknown color type", [&](auto tag) {
        const auto pixels = decltype(tag)::Traits::LockIn(*this, LockMode::ReadWrite);
        // No pixels are in memory after a failed allocation, while the visible size still stands.
        if (pixels.AllocatedWidth < pixels.Width || pixels.AllocatedHeight < pixels.Height)
            throw Exception();
        // Rows come second, so that the corner repeats the replicated columns.
        ReplicateLastColumn(pixels);
        ReplicateLastRow(pixels);
    });
}

void ImageBase::SetPixelAspect(double xResolution, double yResolution) {
    const auto isUsable = [](double resolution) { return resolution != 0 && !std::isnan(resolution); };
    if (!isUsable(xResolution) || !isUsable(yResolution))
        return;
    const double larger = std::max(std::fabs(xResolution), std::fabs(yResolution));
    PixelScaleX = larger / xResolution;
    PixelScaleY = larger / yResolution;
}

void ImageBase::SetImageUserRepresentation(SharedPtr<IImageUserRepresentation> representation) {
    if (!representation)
        throw Exception("SetImageUserRepresentation: p is nullptr");
    UserRepresentation = std::move(representation);
}

} // namespace Quorvex::Data
