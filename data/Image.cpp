#include "data/Image.h"

#include <algorithm>
#include <limits>

namespace Quorvex::Data {

#define QUORVEX_INSTANCE(value, name, sample) template class Image<sample>;
QUORVEX_SAMPLE_TYPES(QUORVEX_INSTANCE)
#undef QUORVEX_INSTANCE

namespace {

/// Sizes are 32-bit numbers at most a little rounded up: a product that leaves 64 bits left 32 bits long before.
class CheckedSize {
public:
    constexpr explicit CheckedSize(std::uint64_t value) : m_value(value) {}

    CheckedSize operator*(CheckedSize other) const {
        std::uint64_t product = 0;
        if (__builtin_mul_overflow(m_value, other.m_value, &product))
            throw Exception();
        return CheckedSize(product);
    }
    CheckedSize operator+(CheckedSize other) const {
        std::uint64_t sum = 0;
        if (__builtin_add_overflow(m_value, other.m_value, &sum))
            throw Exception();
        return CheckedSize(sum);
    }
    CheckedSize RoundedUp(std::uint32_t multiple) const {
        return CheckedSize((*this + CheckedSize(multiple - 1)).m_value / multiple * multiple);
    }
    std::uint32_t Narrowed() const {
        if (m_value > std::numeric_limits<std::uint32_t>::max())
            throw Exception();
        return static_cast<std::uint32_t>(m_value);
    }

private:
    std::uint64_t m_value;
};

} // namespace

Allocation ComputeAllocation(std::uint32_t width, std::uint32_t height, std::uint32_t requestedRowLength,
                             std::uint32_t requestedRows, std::uint32_t bytesPerPixel) {
    // A request below the image's own size would leave pixels without memory.
    const CheckedSize rowLength = CheckedSize(std::max(requestedRowLength, width)).RoundedUp(rowLengthMultiple);
    const CheckedSize rows = CheckedSize(std::max(requestedRows, height)).RoundedUp(rowsMultiple);
    const CheckedSize bytes = rowLength * rows * CheckedSize(bytesPerPixel) + CheckedSize(pixelAlignmentBytes - 1);
    return {rowLength.Narrowed(), rows.Narrowed(), bytes.Narrowed()};
}

SharedPtr<ImageBase> CreateImage(ColorTypeEnum::Value type, std::uint32_t width, std::uint32_t height,
                                 std::uint32_t requestedRowLength, std::uint32_t requestedRows) {
    return Dispatch(type, "unknown color type", [&](auto tag) {
        SharedPtr<ImageBase> image(new Image<typename decltype(tag)::Sample>());
        image->Allocate(width, height, requestedRowLength, requestedRows);
        return image;
    });
}

} // namespace Quorvex::Data
