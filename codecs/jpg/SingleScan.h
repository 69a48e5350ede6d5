#pragma once

#include "codecs/jpg/ScanComponents.h"
#include "data/Lock.h"

namespace ET::Img::Jpg {

/// MCUs with the samples or coefficients of all components, one behind another.
struct Stretch {
    std::uint64_t firstMcu = 0;
    std::size_t mcuCount = 0;
    std::int16_t* blocks = nullptr;
};

/// Baseline MCUs with all components of the frame: pixels at once.
class SingleScanDecoder {
public:
    using PixelLock = Quorvex::Data::Lock<Pixel>;

    /// THREADCOUNT: how many may work on a segment; one reads its codes, and the others make pixels of what it has
    /// read. Raises Exception where the frame cannot be converted to pixels.
    SingleScanDecoder(const ScanContext& context, const ScanHeader& header, const ScanGeometry& geometry,
                      const PixelLock& lock, std::uint32_t threadCount);

    void Decode(const RestartSegments::Segment& segment, BitReader& reader, std::uint64_t& done) const;
    /// What no scan has reached.
    void FillWithGrey(std::uint64_t firstMcu, std::uint64_t mcuCount) const;

private:
    class Reader;
    class Pipeline;

    void DecodeAlone(Reader& reader) const;
    void Show(const Stretch& stretch) const;
    Pixel* PixelsOf(std::uint64_t mcu) const;
    /// How many MCUs have that many blocks at most.
    std::size_t McusWithin(std::size_t blockCount) const { return blockCount / m_blocksPerMcu; }

    std::vector<ScanComponent> m_components;
    std::array<std::uint32_t, 4> m_places{}; ///< In the frame, of the scan's components.
    ScanGeometry m_geometry;
    ColorConversion m_conversion;
    const PixelLock& m_lock;
    std::uint32_t m_threadCount;
    std::uint32_t m_mcuWidth; ///< Pixels.
    std::uint32_t m_mcuHeight;
    std::size_t m_blocksPerMcu = 0;
};

} // namespace ET::Img::Jpg
