#include "codecs/bmp/RunLength.h"

#include "codecs/bmp/Compression.h"
#include "data/StreamBuffer.h"

#include <algorithm>

namespace ET::Img {

namespace {

class RunLengthDecoder {
public:
    RunLengthDecoder(Quorvex::StreamBuffer& bytes, bool isRunLength4, const Palette& palette,
                     const Quorvex::Data::Lock<Pixel>& lock)
        : m_bytes(bytes), m_palette(palette), m_lock(lock), m_shift(isRunLength4 ? 4 : 0),
          m_lowMask(isRunLength4 ? 0xF : 0xFF), m_y(lock.Height - 1) {}

    // Each turn takes two bytes at least, and y wraps below 0 behind the last row.
    void Decode() {
        while (m_y < m_lock.Height) {
            const std::uint32_t count = m_bytes.ReadByte();
            const std::uint8_t value = m_bytes.ReadByte();
            if (count != 0)
                EncodedRun(count, value);
            else if (value == endOfLine)
                EndLine();
            else if (value == endOfBitmap)
                return;
            else if (value == delta)
                Move();
            else
                AbsoluteRun(value);
        }
    }

private:
    static constexpr std::uint8_t endOfLine = 0, endOfBitmap = 1, delta = 2;

    // A run ends with the row; it does not go on in the next one.
    std::uint32_t EndOfRun(std::uint32_t count) const { return std::min(m_x + count, m_lock.Width); }

    void EncodedRun(std::uint32_t count, std::uint8_t value) {
        const Pixel pixels[2] = {m_palette[value >> m_shift], m_palette[value & m_lowMask]};
        const std::uint32_t end = EndOfRun(count);
        Pixel* row = m_lock.Row(m_y);
        for (std::uint32_t i = 0; m_x < end; ++m_x, ++i)
            row[m_x] = pixels[i & 1];
    }

    // What lies behind the end of the row is not skipped in the data: such data are malformed, and whatever follows is
    // read as it comes.
    void AbsoluteRun(std::uint32_t count) {
        const std::uint32_t end = EndOfRun(count);
        Pixel* row = m_lock.Row(m_y);
        if (m_shift != 0) {
            for (; m_x < end && end - m_x >= 2; m_x += 2) {
                const std::uint8_t value = m_bytes.ReadByte();
                row[m_x] = m_palette[value >> m_shift];
                row[m_x + 1] = m_palette[value & m_lowMask];
            }
        }
        for (; m_x < end; ++m_x)
            row[m_x] = m_palette[m_bytes.ReadByte() >> m_shift];
        if (m_bytes.GetPosition() % 2 != 0)
            m_bytes.ReadByte();
    }

    void EndLine() {
        m_x = 0;
        --m_y;
    }

    void Move() {
        m_x += m_bytes.ReadByte();
        m_y -= m_bytes.ReadByte();
    }

    Quorvex::StreamBuffer& m_bytes;
    const Palette& m_palette;
    const Quorvex::Data::Lock<Pixel>& m_lock;
    unsigned m_shift;
    unsigned m_lowMask;
    std::uint32_t m_x = 0;
    std::uint32_t m_y;
};

} // namespace

void DecodeRunLength(Quorvex::Stream& stream, const NormalHeader& header, const Palette& palette,
                     const Quorvex::Data::Lock<Pixel>& lock) {
    // The header's size is trusted, as the only one there is; 0 makes the first byte fail.
    Quorvex::StreamBuffer bytes(stream.lock(header.fields.biSizeImage));
    RunLengthDecoder(bytes, header.fields.biCompression == Compression::RunLength4, palette, lock).Decode();
}

} // namespace ET::Img
