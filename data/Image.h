#pragma once

#include "data/Dispatch.h"
#include "foundation/platform/Memory.h"

#include <cstddef>
#include <memory>

namespace Quorvex::Data {

/// Empty tags by which generic image code names the sample type of an image while compiling.
template <class Image>
struct Info {
    struct ImageExpr {};
};
template <class Expression>
struct ImageExpr {};

inline constexpr std::uint32_t rowLengthMultiple = 64; ///< In pixels: serves row loops and uploads of any sample size.
inline constexpr std::uint32_t rowsMultiple = 8;
inline constexpr std::uint32_t pixelAlignmentBytes = 16; ///< The first pixel, and with it every row, lies on it.

/// Bytes to allocate for an image, with the rounded row length and row count. All products are checked.
struct Allocation {
    std::uint32_t allocatedWidth;
    std::uint32_t allocatedHeight;
    std::uint32_t bytes;
};
/// Raises Exception with empty text where a result does not fit 32 bits.
Allocation ComputeAllocation(std::uint32_t width, std::uint32_t height, std::uint32_t requestedRowLength,
                             std::uint32_t requestedRows, std::uint32_t bytesPerPixel);

/// The concrete image. All pixels lie in one allocation, pixel (x, y) at Data + y * AllocatedWidth + x, 16-byte
/// aligned.
template <class T>
class Image final : public ImageExpr<typename Info<Image<T>>::ImageExpr>,
                    public Info<Image<T>>::ImageExpr,
                    public ImageBase {
public:
    Image() : ImageBase(SampleTraits<T>::type) {}

    std::uint32_t GetWidth() const override { return Width; }
    std::uint32_t GetHeight() const override { return Height; }
    void* Allocate(std::uint32_t width, std::uint32_t height, std::uint32_t requestedRowLength,
                   std::uint32_t requestedRows) override;
    bool DeleteContextObjects() override { return true; }

#define QUORVEX_LOCK(value, name, sample)                                                                              \
    Lock<const sample> Lock##name(LockMode mode) const override {                                                      \
        if constexpr (SampleTraits<sample>::isColor == SampleTraits<T>::isColor)                                       \
            return Lock<const sample>(*this, mode, reinterpret_cast<const sample*>(Data));                             \
        else                                                                                                           \
            return ImageBase::Lock##name(mode);                                                                        \
    }                                                                                                                  \
    Lock<sample> Lock##name(LockMode mode) override {                                                                  \
        if constexpr (SampleTraits<sample>::isColor == SampleTraits<T>::isColor)                                       \
            return Lock<sample>(*this, mode, reinterpret_cast<sample*>(Data));                                         \
        else                                                                                                           \
            return ImageBase::Lock##name(mode);                                                                        \
    }
    QUORVEX_SAMPLE_TYPES(QUORVEX_LOCK)
#undef QUORVEX_LOCK

private:
    T* Data = nullptr;
    std::uint32_t Width = 0;
    std::uint32_t Height = 0;
    std::unique_ptr<std::byte[]> Buffer;
};

template <class T>
void* Image<T>::Allocate(std::uint32_t width, std::uint32_t height, std::uint32_t requestedRowLength,
                         std::uint32_t requestedRows) {
    Data = nullptr;
    Buffer.reset();
    // Should the rest fail, the visible size stays what it was, while no row of it is in memory.
    AllocatedWidth = 0;
    AllocatedHeight = 0;
    const Allocation allocation = ComputeAllocation(width, height, requestedRowLength, requestedRows, sizeof(T));
    Buffer.reset(new std::byte[allocation.bytes]);
    Platform::ExpectToFill(Buffer.get(), allocation.bytes);
    Width = width;
    Height = height;
    AllocatedWidth = allocation.allocatedWidth;
    AllocatedHeight = allocation.allocatedHeight;
    const auto address = reinterpret_cast<std::uintptr_t>(Buffer.get());
    const std::uintptr_t padding = (pixelAlignmentBytes - address % pixelAlignmentBytes) % pixelAlignmentBytes;
    Data = reinterpret_cast<T*>(Buffer.get() + padding);
    return Data;
}

#define QUORVEX_INSTANCE(value, name, sample) extern template class Image<sample>;
QUORVEX_SAMPLE_TYPES(QUORVEX_INSTANCE)
#undef QUORVEX_INSTANCE

/// A new, allocated image of the type; raises as Allocate does, and Exception "unknown color type" outside the list.
SharedPtr<ImageBase> CreateImage(ColorTypeEnum::Value type, std::uint32_t width, std::uint32_t height,
                                 std::uint32_t requestedRowLength = 0, std::uint32_t requestedRows = 0);

} // namespace Quorvex::Data
