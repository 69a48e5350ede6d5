#pragma once

#include "codecs/ImageInfo.h"
#include "data/StreamBuffer.h"

struct png_struct_def;
struct png_info_def;

namespace ET::Img::Png {

/// What a PNG file holds once palettes, low depths and transparent colours are expanded.
struct Header {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t bitDepth = 0;  ///< Of one sample, 8 or 16.
    std::uint32_t colorType = 0; ///< 0 grey, 2 RGB, 4 grey and alpha, 6 RGBA, as the format numbers them.
    bool isInterlaced = false;

    std::uint32_t GetChannels() const { return (colorType & 2 ? 3u : 1u) + (HasAlpha() ? 1u : 0u); }
    bool HasAlpha() const { return (colorType & 4) != 0; }
    /// Without padding; samples of 16 bits have their high byte first.
    std::uint64_t GetRowBytes() const { return std::uint64_t(width) * GetChannels() * (bitDepth / 8); }

    /// The image to create. Raises Exception "unsupported bit_depth" or "color_type not supported".
    ImageInfo GetImageInfo() const;
};

/// The bytes of a file for a library that cannot cope with exceptions. Reads large blocks.
class Source {
public:
    /// From the stream's start; the stream must outlive it. Raises Exception "Not a PNG file".
    explicit Source(Quorvex::Stream& stream);

    /// False where the stream cannot deliver them, or memory runs out.
    bool TryRead(std::uint8_t* destination, std::size_t byteCount);
    bool IsOutOfMemory() const { return m_isOutOfMemory; }
    /// Of the whole file.
    std::uint64_t GetSize() const { return m_size; }

private:
    void Refill();

    Quorvex::Stream& m_stream;
    Quorvex::StreamBuffer m_block;
    std::uint64_t m_size = 0;
    std::uint64_t m_left = 0; ///< Bytes behind the block.
    bool m_isOutOfMemory = false;
};

/// A PNG file through libpng, row after row. Raises Exception with empty text for whatever libpng takes for an error,
/// and std::bad_alloc where it gets no memory. Chunks that do not change the pixels are skipped unread.
class Reader {
public:
    /// Reads from the stream's start to the first image data, and none of them. The stream must outlive the reader.
    explicit Reader(Quorvex::Stream& stream);
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;
    ~Reader();

    const Header& GetHeader() const { return m_header; }

    /// How often all rows are to be read from the first on: an interlaced file has seven passes, and a row is complete
    /// after the last.
    std::uint32_t GetPassCount() const { return m_passCount; }
    /// The next row of the pass, of Header::GetRowBytes bytes. A later pass needs what the earlier ones left there.
    void ReadRow(std::uint8_t* row);
    /// Checks the rest of the file, once all rows are read.
    void ReadEnd();

private:
    struct Callbacks;

    void ReadHeader();
    void CheckPlausible();
    /// Runs what calls libpng, which leaves a failing call by a jump: nothing inside may need a destructor.
    template <class Action>
    void Run(const Action& action);
    [[noreturn]] void Fail() const;

    Source m_source;
    Header m_header;
    std::uint32_t m_passCount = 1;
    bool m_isOutOfMemory = false;
    png_struct_def* m_png = nullptr;
    png_info_def* m_info = nullptr;
};

} // namespace ET::Img::Png
