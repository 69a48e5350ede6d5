#include "codecs/png/PngReader.h"

#include "foundation/Exception.h"

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstring>
#include <new>

#include <png.h>

namespace ET::Img::Png {

using Quorvex::Data::ColorTypeEnum;

namespace {

constexpr std::uint32_t signatureBytes = 8;
constexpr std::array<std::uint8_t, signatureBytes> signature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

// Read at once from the file, and handed to inflate at once.
constexpr std::uint32_t blockBytes = 64 * 1024;

// Of the chunks that are kept, a palette has 768 bytes at most and its transparency 256. Longer chunks are skipped
// where they may be, whatever their length.
constexpr std::uint32_t keptChunkBytes = 64 * 1024;
constexpr std::uint32_t keptChunkCount = 16;

// Deflate (RFC 1951) makes 258 bytes of two bits at best.
constexpr std::uint64_t deflateFactor = 1032;

} // namespace

ImageInfo Header::GetImageInfo() const {
    ImageInfo info;
    info.Width = width;
    info.Height = height;
    switch (bitDepth) {
    case 8:
        info.ColorType = ColorTypeEnum::BGRAUInt8;
        break;
    case 16:
        info.ColorType = ColorTypeEnum::BGRAUInt16;
        break;
    default:
        throw Quorvex::Exception("unsupported bit_depth");
    }
    switch (colorType) {
    case PNG_COLOR_TYPE_GRAY:
    case PNG_COLOR_TYPE_RGB:
    case PNG_COLOR_TYPE_GRAY_ALPHA:
    case PNG_COLOR_TYPE_RGB_ALPHA:
        break;
    default:
        throw Quorvex::Exception("color_type not supported");
    }
    info.BitsPerPixel = bitDepth * GetChannels();
    return info;
}

Source::Source(Quorvex::Stream& stream) : m_stream(stream), m_size(stream.size()) {
    // On its own: most files that are asked here are none.
    std::array<std::uint8_t, signatureBytes> bytes{};
    m_stream.seek(0);
    if (m_size >= signatureBytes)
        m_stream.read(bytes.data(), signatureBytes);
    if (bytes != signature)
        throw Quorvex::Exception("Not a PNG file");
    m_left = m_size - signatureBytes;
}

void Source::Refill() {
    const auto next = static_cast<std::uint32_t>(std::min<std::uint64_t>(m_left, blockBytes));
    m_block.Refill(m_stream.lock(next));
    m_left -= next;
}

bool Source::TryRead(std::uint8_t* destination, std::size_t byteCount) {
    try {
        while (byteCount != 0) {
            if (m_block.GetRemaining() == 0) {
                if (m_left == 0)
                    return false;
                Refill();
            }
            const auto part = static_cast<std::uint32_t>(std::min<std::size_t>(byteCount, m_block.GetRemaining()));
            std::memcpy(destination, m_block.Take(part), part);
            destination += part;
            byteCount -= part;
        }
    } catch (const std::bad_alloc&) {
        m_isOutOfMemory = true;
        return false;
    } catch (const std::exception&) {
        return false;
    }
    return true;
}

/// What libpng calls. A jump leaves these functions: none of their objects has a destructor.
struct Reader::Callbacks {
    static void Read(png_structp png, png_bytep destination, std::size_t byteCount) {
        if (!static_cast<Source*>(png_get_io_ptr(png))->TryRead(destination, byteCount))
            png_error(png, "");
    }

    [[noreturn]] static void OnError(png_structp png, png_const_charp) { png_longjmp(png, 1); }
    static void OnWarning(png_structp, png_const_charp) {}

    static png_voidp Allocate(png_structp png, png_alloc_size_t byteCount) {
        try {
            return new std::uint8_t[byteCount];
        } catch (const std::bad_alloc&) {
            static_cast<Reader*>(png_get_mem_ptr(png))->m_isOutOfMemory = true;
            return nullptr;
        }
    }
    static void Free(png_structp, png_voidp block) { delete[] static_cast<std::uint8_t*>(block); }
};

Reader::Reader(Quorvex::Stream& stream) : m_source(stream) {
    m_png = png_create_read_struct_2(PNG_LIBPNG_VER_STRING, nullptr, Callbacks::OnError, Callbacks::OnWarning, this,
                                     Callbacks::Allocate, Callbacks::Free);
    if (m_png == nullptr)
        Fail();
    m_info = png_create_info_struct(m_png);
    try {
        if (m_info == nullptr)
            Fail();
        ReadHeader();
    } catch (...) {
        png_destroy_read_struct(&m_png, &m_info, nullptr);
        throw;
    }
}

Reader::~Reader() {
    png_destroy_read_struct(&m_png, &m_info, nullptr);
}

void Reader::Fail() const {
    if (m_isOutOfMemory || m_source.IsOutOfMemory())
        throw std::bad_alloc();
    throw Quorvex::Exception();
}

template <class Action>
void Reader::Run(const Action& action) {
    if (setjmp(png_jmpbuf(m_png)) != 0)
        Fail();
    action();
}

void Reader::ReadHeader() {
    Run([this] {
        png_set_sig_bytes(m_png, signatureBytes);
        png_set_read_fn(m_png, &m_source, Callbacks::Read);
        png_set_user_limits(m_png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
        png_set_chunk_cache_max(m_png, keptChunkCount);
        png_set_chunk_malloc_max(m_png, keptChunkBytes);
        png_set_compression_buffer_size(m_png, blockBytes);
        png_set_keep_unknown_chunks(m_png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
        png_set_benign_errors(m_png, 1);
        png_read_info(m_png, m_info);
    });
    CheckPlausible();
    Run([this] {
        png_set_expand(m_png);
        m_passCount = static_cast<std::uint32_t>(png_set_interlace_handling(m_png));
        m_header.isInterlaced = m_passCount > 1;
        png_read_update_info(m_png, m_info);
        m_header.width = png_get_image_width(m_png, m_info);
        m_header.height = png_get_image_height(m_png, m_info);
        m_header.bitDepth = png_get_bit_depth(m_png, m_info);
        m_header.colorType = png_get_color_type(m_png, m_info);
    });
}

/// A file of a hundred bytes may claim billions of pixels. It can only be damaged, and is refused before the memory for
/// them is taken.
void Reader::CheckPlausible() {
    const std::uint64_t pixelBits = std::uint64_t(png_get_channels(m_png, m_info)) * png_get_bit_depth(m_png, m_info);
    const std::uint64_t rowBytes = (png_get_image_width(m_png, m_info) * pixelBits + 7) / 8;
    if (png_get_image_height(m_png, m_info) > m_source.GetSize() * deflateFactor / rowBytes)
        Fail();
}

void Reader::ReadRow(std::uint8_t* row) {
    Run([this, row] { png_read_row(m_png, row, nullptr); });
}

void Reader::ReadEnd() {
    Run([this] { png_read_end(m_png, nullptr); });
}

} // namespace ET::Img::Png
