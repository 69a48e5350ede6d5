#pragma once

#include "data/ColorTypeEnum.h"
#include "data/ImageUserRepresentation.h"
#include "data/Lock.h"
#include "foundation/SharedPtr.h"

namespace Quorvex::Data {

/// A raster of one of twenty sample types, stored top-down. Pixels are reached through lock views alone. Images are
/// managed by SharedPtr; an image belongs to one thread at a time until it is finished, and is only read afterwards.
class ImageBase : public EnableSharedPtrFromThis, public ColorTypeEnum {
public:
    explicit ImageBase(ColorTypeEnum::Value type);
    virtual ~ImageBase();

    virtual std::uint32_t GetWidth() const = 0;
    virtual std::uint32_t GetHeight() const = 0;
    /// Allocates pixels for width x height, in rows of at least requestedRowLength pixels and at least requestedRows
    /// rows (0: no more than the image needs), rounded up to 64 pixels and 8 rows. The memory is not cleared. Raises
    /// Exception with empty text where a size leaves 32 bits, std::bad_alloc where memory runs out; the image then has
    /// no pixels.
    virtual void* Allocate(std::uint32_t width, std::uint32_t height, std::uint32_t requestedRowLength,
                           std::uint32_t requestedRows) = 0;

    // Which locks an image answers follows the kind of its samples only: a grey image answers all grey locks, a colour
    // image all colour locks, and the caller dispatches on ColorType first. The others raise "LockX is not
    // implemented".
#define QUORVEX_LOCK(value, name, sample)                                                                              \
    virtual Lock<const sample> Lock##name(LockMode mode) const;                                                        \
    virtual Lock<sample> Lock##name(LockMode mode);
    QUORVEX_SAMPLE_TYPES(QUORVEX_LOCK)
#undef QUORVEX_LOCK

    /// Address of the constant "ImageBase": says that an object of a foreign module is an image.
    virtual const char* TypeTag() const;
    /// True once the image holds no object of a video context any more.
    virtual bool DeleteContextObjects() = 0;
    /// Called when the last lock view has gone, out of its destructor: must not raise.
    virtual void OnUnlocked() const;

    /// Stores the value in every visible pixel, cut to the sample's width. Float types raise
    /// "Data::ImageBase::clear: unknown color type".
    void clear(std::int32_t value);
    /// Replicates the right and lower edge by up to two pixels into the padding, so that a filter at the border finds
    /// valid neighbours.
    void PaintBorder();
    /// Resolutions in pixels per length. The coarser axis gets a scale above 1; zero or not-a-number changes nothing.
    void SetPixelAspect(double xResolution, double yResolution);
    void SetImageUserRepresentation(SharedPtr<IImageUserRepresentation> representation);
    const SharedPtr<IImageUserRepresentation>& GetImageUserRepresentation() const {
        return UserRepresentation;
    }

    SharedPtr<ImageBase> SharedPtrFromThis() {
        return EnableSharedPtrFromThis::SharedPtrFromThis(this);
    }

protected:
    friend class LockBase;
    // A lock of a constant image counts too.
    mutable std::uint32_t LockCount = 0;
    mutable std::uint32_t WriteLockCount = 0;

public:
    std::uint32_t AllocatedWidth = 0;  ///< Pixels per row in memory.
    std::uint32_t AllocatedHeight = 0; ///< Rows in memory.
    double PixelScaleX = 1.0;          ///< Display width of one pixel.
    double PixelScaleY = 1.0;          ///< Display height of one pixel.
    std::uint32_t HasAlpha = 0;        ///< 1 where the file really carries transparency; set by the decoder.

private:
    SharedPtr<IImageUserRepresentation> UserRepresentation;
};

} // namespace Quorvex::Data
