#include "codecs/tif/Ccitt.h"

#include "codecs/CodeReader.h"
#include "codecs/tif/CcittCodes.h"
#include "codecs/tif/CcittRow.h"
#include "foundation/Exception.h"

#include <utility>

namespace ET::Img {

namespace {

using Ccitt::Mode;
using Ccitt::ModeEntry;
using Ccitt::Row;
using Ccitt::RunEntry;

enum class Color { White, Black };

Color Opposite(Color color) {
    return color == Color::White ? Color::Black : Color::White;
}

/// Codes of runs and modes, and the ends of lines between rows.
template <BitOrder order>
class Codes {
public:
    Codes(const std::uint8_t* source, std::size_t sourceSize) : m_bits(source, sourceSize) {}

    bool HasMore() const { return m_bits.HasMore(); }
    bool IsAtEnd() const { return m_bits.IsOverrun(); }

    /// Adds a run's length to the place where it begins. False where its codes are none.
    bool ReadRun(Color color, std::uint64_t& place) {
        const RunEntry* const entries = color == Color::White ? m_white : m_black;
        while (true) {
            const RunEntry entry = entries[m_bits.Peek(Ccitt::longestRunCode)];
            m_bits.Skip(entry.bits);
            if (entry.bits == 0 || IsAtEnd())
                return false;
            place += entry.length;
            if (entry.length < 64)
                return true;
        }
    }

    /// Its mode is None where the next bits are no code.
    ModeEntry ReadMode() {
        const ModeEntry entry = m_modes[m_bits.Peek(Ccitt::longestModeCode)];
        m_bits.Skip(entry.bits);
        return IsAtEnd() ? ModeEntry() : entry;
    }

    bool ReadBit() { return m_bits.Read(1) != 0; }
    void SkipToByte() { m_bits.SkipToByte(); }

    /// No code of a run begins with as many zeros.
    bool IsAtEndOfLine() { return m_bits.Peek(endOfLineZeros) == 0 && !IsAtEnd(); }

    /// As many zeros as an end of line has at least.
    void SkipEndOfLineZeros() { m_bits.Skip(endOfLineZeros); }

    /// Skips the zeros of an end of line, however many, and the bit behind them.
    void SkipEndOfLine() {
        while (!m_bits.Read(1) && !IsAtEnd())
            continue;
    }

    /// Skips whatever comes before the next end of line.
    void SeekEndOfLine() {
        while (m_bits.Peek(endOfLineZeros) != 0)
            m_bits.Skip(1);
    }

private:
    static constexpr unsigned endOfLineZeros = 11;

    CodeReader<order> m_bits;
    const RunEntry* m_white = Ccitt::GetWhiteEntries();
    const RunEntry* m_black = Ccitt::GetBlackEntries();
    const ModeEntry* m_modes = Ccitt::GetModeEntries();
};

/// A row that is coming into being.
class NewRow {
public:
    explicit NewRow(Row& row) : m_row(row) { m_row.Clear(); }

    std::uint32_t GetPlace() const { return m_place; }
    Color GetColor() const { return m_color; }
    bool IsDone() const { return m_place == m_row.GetWidth(); }
    /// Whether it has no pixel yet, so that a change may lie before all pixels.
    bool IsEmpty() const { return m_isEmpty; }

    /// Whether it can have pixels up to this place.
    bool CanReach(std::int64_t place) const {
        return (m_isEmpty ? place >= m_place : place > m_place) && place <= m_row.GetWidth();
    }
    /// Pixels of the present colour up to this place.
    void Extend(std::uint32_t place) {
        m_place = place;
        m_isEmpty = false;
    }
    void ChangeColor() {
        m_color = Opposite(m_color);
        if (!IsDone())
            m_row.Change(m_place);
    }
    /// The rest is white.
    void EndDamaged() {
        if (m_row.EndsBlack() && !IsDone())
            m_row.Change(m_place);
    }

private:
    Row& m_row;
    std::uint32_t m_place = 0;
    Color m_color = Color::White;
    bool m_isEmpty = true;
};

/// A run of the present colour. False where it is damaged.
template <BitOrder order>
bool DecodeRun(Codes<order>& codes, NewRow& row, std::uint32_t width) {
    std::uint64_t place = row.GetPlace();
    const bool isRun = codes.ReadRun(row.GetColor(), place);
    // Of a damaged run whole multiples of 64 pixels may have come.
    if (place <= width)
        row.Extend(static_cast<std::uint32_t>(place));
    if (!isRun || place > width)
        return false;
    row.ChangeColor();
    return true;
}

/// A row in one dimension (ITU T.4 section 4.1).
template <BitOrder order>
bool DecodeRuns(Codes<order>& codes, NewRow& row, std::uint32_t width) {
    while (!row.IsDone())
        if (!DecodeRun(codes, row, width))
            return false;
    return true;
}

/// The changes of the row above, of which the next one to the right is asked for again and again.
class Reference {
public:
    explicit Reference(const Row& row) : m_row(row) {}

    /// Finds b1 of ITU T.4 section 4.2.1.1: the first change to the right of the new row's last pixel that leads to the
    /// opposite of the new row's colour.
    void Find(const NewRow& row) {
        const std::uint32_t place = row.GetPlace();
        while (m_change > 0 && m_row[m_change - 1] > place)
            --m_change;
        const std::size_t parity = row.GetColor() == Color::Black ? 1 : 0;
        if (m_change % 2 != parity)
            ++m_change;
        while (m_row[m_change] < m_row.GetWidth() && !row.CanReach(m_row[m_change]))
            m_change += 2;
    }
    std::uint32_t GetB1() const { return m_row[m_change]; }
    std::uint32_t GetB2() const { return m_row[m_change + 1]; }

private:
    const Row& m_row;
    std::size_t m_change = 0;
};

/// A row in two dimensions (ITU T.4 section 4.2).
template <BitOrder order>
bool DecodeModes(Codes<order>& codes, NewRow& row, const Row& above) {
    const std::uint32_t width = above.GetWidth();
    Reference reference(above);
    while (!row.IsDone()) {
        const ModeEntry entry = codes.ReadMode();
        reference.Find(row);
        const std::int64_t change = std::int64_t{reference.GetB1()} + entry.offset;
        switch (entry.mode) {
        case Mode::None:
            return false;
        case Mode::Pass:
            row.Extend(reference.GetB2());
            break;
        case Mode::Horizontal:
            if (!DecodeRun(codes, row, width) || !DecodeRun(codes, row, width))
                return false;
            break;
        case Mode::Vertical:
            if (!row.CanReach(change))
                return false;
            row.Extend(static_cast<std::uint32_t>(change));
            row.ChangeColor();
            break;
        }
    }
    return true;
}

template <BitOrder order>
class Decoder {
public:
    Decoder(const std::uint8_t* source, std::size_t sourceSize, const CcittParameters& parameters)
        : m_codes(source, sourceSize), m_parameters(parameters), m_row(parameters.width), m_above(parameters.width) {}

    /// Whether all was well.
    bool Decode(std::uint8_t* target) {
        bool isWhole = true;
        const std::uint32_t rowBytes = Ccitt::GetRowBytes(m_parameters.width);
        for (std::uint32_t y = 0; y < m_parameters.rows; ++y, target += rowBytes) {
            if (!BeginRow(y == 0))
                return false;
            if (!DecodeRow())
                isWhole = false;
            m_row.Write(target);
            std::swap(m_row, m_above);
        }
        return isWhole;
    }

private:
    bool Has(std::uint32_t option) const { return (m_parameters.t4Options & option) != 0; }

    /// Goes to the codes of the next row. False where there are none.
    bool BeginRow(bool isFirst) {
        if (m_parameters.isModifiedHuffman) {
            // Zeros that are no code would stop all rows to come.
            if (m_isDamaged && m_codes.IsAtEndOfLine())
                m_codes.SkipEndOfLineZeros();
            m_codes.SkipToByte();
            return m_codes.HasMore();
        }
        if (m_hasEndsOfLine)
            m_codes.SeekEndOfLine();
        else if (!isFirst && Has(T4Options::fillBits))
            m_codes.SkipToByte();
        const bool isAtEndOfLine = m_codes.IsAtEndOfLine();
        if (isAtEndOfLine) {
            m_codes.SkipEndOfLine();
            m_hasEndsOfLine = true;
        }
        m_isRelative = Has(T4Options::twoDimensional) && !m_codes.ReadBit();
        // Two ends of line in a row are the end of the page.
        return !m_codes.IsAtEnd() && !(isAtEndOfLine && m_codes.IsAtEndOfLine());
    }

    bool DecodeRow() {
        NewRow row(m_row);
        const bool isWhole = !m_parameters.isModifiedHuffman && m_isRelative
                                 ? DecodeModes(m_codes, row, m_above)
                                 : DecodeRuns(m_codes, row, m_parameters.width);
        m_isDamaged = !isWhole;
        if (m_isDamaged)
            row.EndDamaged();
        return isWhole;
    }

    Codes<order> m_codes;
    const CcittParameters m_parameters;
    Row m_row;
    Row m_above;
    bool m_hasEndsOfLine = false;
    bool m_isRelative = false;
    bool m_isDamaged = false;
};

template <BitOrder order>
bool Decode(const std::uint8_t* source, std::size_t sourceSize, std::uint8_t* target,
            const CcittParameters& parameters) {
    return Decoder<order>(source, sourceSize, parameters).Decode(target);
}

} // namespace

std::size_t DecodeCcitt(const std::uint8_t* source, std::size_t sourceSize, std::uint8_t* target,
                        std::size_t targetSize, const CcittParameters& parameters) {
    const std::uint64_t bytes = std::uint64_t{Ccitt::GetRowBytes(parameters.width)} * parameters.rows;
    if (bytes > targetSize)
        throw Quorvex::Exception();
    const auto decode = parameters.isFillOrderReversed ? Decode<BitOrder::ReversedBytes> : Decode<BitOrder::HighFirst>;
    if (bytes != 0 && !decode(source, sourceSize, target, parameters))
        throw Quorvex::Exception();
    return static_cast<std::size_t>(bytes);
}

} // namespace ET::Img
