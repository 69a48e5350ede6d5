#pragma once

#include "codecs/ImageInfo.h"
#include "codecs/jpg/CoefficientTable.h"
#include "codecs/jpg/InverseDct.h"
#include "data/StreamBuffer.h"
#include "foundation/String.h"

#include <cstdlib>
#include <memory>
#include <new>

namespace ET::Img::Jpg {

/// Blocks of coefficients of a whole component, all zero at first and aligned to 16 bytes. Memory that nothing is
/// written to costs nothing.
class CoefficientBlocks {
public:
    bool IsAllocated() const { return m_first != nullptr; }
    /// Raises std::bad_alloc.
    void Allocate(std::uint64_t blockCount);
    std::int16_t* Block(std::uint64_t index) const { return m_first + index * blockSize; }

private:
    struct Free {
        void operator()(void* memory) const { std::free(memory); }
    };
    std::unique_ptr<void, Free> m_memory;
    std::int16_t* m_first = nullptr;
};

struct Component {
    std::uint32_t horizontal = 1; ///< Sampling factors, 1 to 4.
    std::uint32_t vertical = 1;
    std::uint32_t quantisation = 0; ///< Selectors of tables, 0 to 3.
    std::uint32_t dcTable = 0;
    std::uint32_t acTable = 0;
    /// The blocks of each MCU lie together, row by row of the component within it.
    CoefficientBlocks blocks;

    std::uint32_t BlocksPerMcu() const { return horizontal * vertical; }
};

enum class FrameKind { Baseline, Progressive, Lossless };

/// What the frame header (ITU T.81 B.2.2) says.
struct Frame {
    FrameKind kind = FrameKind::Baseline;
    std::uint32_t precision = 0; ///< Bits per sample, up to 16.
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t componentCount = 0;                       ///< 0 before a frame header was read.
    std::array<std::uint8_t, 4> identifiers{};              ///< Of the components in the order of the frame.
    std::unique_ptr<std::array<Component, 256>> components; ///< By identifier.
    std::uint32_t largestHorizontal = 1;
    std::uint32_t largestVertical = 1;
    std::uint32_t mcuColumns = 0;
    std::uint32_t mcuRows = 0;
    std::uint32_t allocatedWidth = 0; ///< Such that a whole MCU can always be stored.
    std::uint32_t allocatedHeight = 0;

    bool IsRead() const { return componentCount != 0; }
    Component& Of(std::uint8_t identifier) const { return (*components)[identifier]; }
    /// The component at a place of the frame.
    Component& At(std::uint32_t place) const { return Of(identifiers[place]); }
    ImageInfo GetImageInfo() const;
};

/// Reads a frame header behind its marker. Raises Exception with the reason for a frame that cannot be.
Frame ReadFrame(Quorvex::StreamBuffer& buffer, FrameKind kind);

/// The tables that scans select from.
struct Tables {
    /// In the order of the file, which is the zigzag one.
    std::array<std::array<std::uint16_t, blockSize>, 4> quantisation{};
    std::array<HuffmanTable, 4> dc;
    std::array<HuffmanTable, 4> ac;
    std::array<CoefficientTable, 4> coefficients; ///< Of the codes in ac.
};

/// The segment behind a DQT or DHT marker. Raises Exception with the number of what it cannot hold: 550 for tables of
/// 16 bits, 617 for a class that is neither DC nor AC, 578 for more than 255 symbols.
void ReadQuantisationTables(Quorvex::StreamBuffer& buffer, Tables& tables);
void ReadHuffmanTables(Quorvex::StreamBuffer& buffer, Tables& tables);

/// Raises Exception "component N sampling factors must be 1" for the first component from FIRST to LAST, counted from
/// 1, that has more than one block per MCU, or more than one sample where there are no blocks.
void RequireFactorsOfOne(const Frame& frame, std::uint32_t first, std::uint32_t last);
/// "component N sampling factors must be " and what is allowed.
Quorvex::String FactorText(std::uint32_t component, const char* allowed);

inline std::uint32_t DividedUp(std::uint64_t value, std::uint32_t by) {
    return static_cast<std::uint32_t>((value + by - 1) / by);
}

/// A number of 16 bits, the high byte first.
std::uint32_t ReadWord(Quorvex::StreamBuffer& buffer);
/// The length of a segment at whose field the buffer stands; gives where the segment ends. Raises Exception with empty
/// text for a length that does not hold itself, and for an end beyond the file.
std::uint32_t ReadSegmentEnd(Quorvex::StreamBuffer& buffer);

/// Where the coefficient at a place of the zigzag sequence lies in its block (ITU T.81 figure A.6).
extern const std::array<std::uint8_t, blockSize> naturalOrder;

} // namespace ET::Img::Jpg
