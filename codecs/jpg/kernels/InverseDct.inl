// The fast inverse transform of Intel's application note AP-922: a row stage of multiplications and additions of pairs,
// whose factors already hold what the column stage would scale its rows by, and a column stage with tangents alone.
// Included behind the lanes of an instruction set; the results are the same for each.

#include "codecs/jpg/InverseDct.h"

#include <array>
#include <cmath>
#include <cstring>

namespace ET::Img::Jpg {
namespace {

// The row stage keeps 3 bits below 1; the column stage takes away these and the two bits of a quarter.
constexpr int rowShift = 12;
constexpr int columnShift = 5;

constexpr double pi = 3.14159265358979323846;

/// Rows k and 8 - k are scaled alike; rows 0 and 4, which no tangent leads to, by the cosine of a quarter.
enum RowClass { Rows04, Rows17, Rows26, Rows35, RowClassCount };

struct RowFactors {
    // Each holds four pairs, one per result. Even inputs: (0, 2) and (4, 6); odd ones: (1, 3) and (5, 7).
    std::int16_t even02[8];
    std::int16_t even46[8];
    std::int16_t odd13[8];
    std::int16_t odd57[8];
};

inline std::int16_t Factor(int input, int result, double scale) {
    // The cosine of input 0 stands for the root of a half that the definition gives it.
    const double cosine = input == 0 ? std::cos(pi / 4) : std::cos((2 * result + 1) * input * pi / 16);
    return static_cast<std::int16_t>(std::lround(cosine * scale * 32768.0));
}

inline RowFactors MakeFactors(int rowInput) {
    const double scale = std::cos(rowInput * pi / 16);
    RowFactors factors;
    for (int result = 0; result < 4; ++result) {
        for (int second = 0; second < 2; ++second) {
            const int place = 2 * result + second;
            factors.even02[place] = Factor(2 * second, result, scale);
            factors.even46[place] = Factor(4 + 2 * second, result, scale);
            factors.odd13[place] = Factor(1 + 2 * second, result, scale);
            factors.odd57[place] = Factor(5 + 2 * second, result, scale);
        }
    }
    return factors;
}

inline const std::array<RowFactors, RowClassCount>& GetFactors() {
    static const std::array<RowFactors, RowClassCount> factors{MakeFactors(4), MakeFactors(1), MakeFactors(2),
                                                               MakeFactors(3)};
    return factors;
}

LANES_FUNCTION Words TransformRow(Words row, const RowFactors& factors, Words rounding) {
    // Inputs 0 2 4 6 | 1 3 5 7.
    row = ShufflePairs<3, 1, 2, 0>(SwapMiddleOfHalves(row));
    const Words even =
        AddPairSums(AddPairSums(MultiplyPairs(ShufflePairs<0, 0, 0, 0>(row), LoadForAll(factors.even02)),
                                MultiplyPairs(ShufflePairs<1, 1, 1, 1>(row), LoadForAll(factors.even46))),
                    rounding);
    const Words odd = AddPairSums(MultiplyPairs(ShufflePairs<2, 2, 2, 2>(row), LoadForAll(factors.odd13)),
                                  MultiplyPairs(ShufflePairs<3, 3, 3, 3>(row), LoadForAll(factors.odd57)));
    const Words front = ShiftPairSums<rowShift>(AddPairSums(even, odd));
    const Words back = ShiftPairSums<rowShift>(SubtractPairSums(even, odd));
    return PackPairSums(front, ShufflePairs<0, 1, 2, 3>(back));
}

/// The high half of a product with a fraction of 16 bits.
LANES_FUNCTION Words Times(Words values, int fraction) {
    return MultiplyHigh(values, Broadcast(fraction));
}
LANES_FUNCTION Words TimesTangent1(Words values) {
    return Times(values, 13036);
}
LANES_FUNCTION Words TimesTangent2(Words values) {
    return Times(values, 27146);
}
/// The tangent is above a half, and the fraction what it has more than 1, below 0.
LANES_FUNCTION Words TimesTangent3(Words values) {
    return AddSaturated(Times(values, -21746), values);
}
LANES_FUNCTION Words TimesCosine4(Words values) {
    const Words half = Times(values, 23170);
    return AddSaturated(half, half);
}

LANES_FUNCTION Words Finished(Words samples) {
    return Maximum(Minimum(ShiftRight<columnShift>(samples), Broadcast(127)), Broadcast(-128));
}

/// What the column stage combines its outputs of: output i is even[i] + odd[i], and output 7 - i the difference.
struct Columns {
    Words even[4];
    Words odd[4];
};

LANES_FUNCTION void FinishOdd(Columns& columns, Words sum17, Words difference17, Words sum35, Words difference35) {
    const Words inner = SubtractSaturated(sum17, sum35);
    const Words outer = AddSaturated(difference17, difference35);
    columns.odd[0] = AddSaturated(sum17, sum35);
    columns.odd[1] = TimesCosine4(AddSaturated(inner, outer));
    columns.odd[2] = TimesCosine4(SubtractSaturated(inner, outer));
    columns.odd[3] = SubtractSaturated(difference17, difference35);
}

LANES_FUNCTION void FinishEven(Columns& columns, Words sum04, Words difference04, Words sum26, Words difference26) {
    columns.even[0] = AddSaturated(sum04, sum26);
    columns.even[1] = AddSaturated(difference04, difference26);
    columns.even[2] = SubtractSaturated(difference04, difference26);
    columns.even[3] = SubtractSaturated(sum04, sum26);
}

LANES_FUNCTION void TransformColumns(Columns& columns, const Words (&x)[8]) {
    FinishOdd(columns, AddSaturated(TimesTangent1(x[7]), x[1]), SubtractSaturated(TimesTangent1(x[1]), x[7]),
              AddSaturated(TimesTangent3(x[5]), x[3]), SubtractSaturated(TimesTangent3(x[3]), x[5]));
    FinishEven(columns, AddSaturated(x[0], x[4]), SubtractSaturated(x[0], x[4]),
               AddSaturated(TimesTangent2(x[6]), x[2]), SubtractSaturated(TimesTangent2(x[2]), x[6]));
}

/// With the last four rows zero.
LANES_FUNCTION void TransformHalfColumns(Columns& columns, const Words (&x)[8]) {
    FinishOdd(columns, x[1], TimesTangent1(x[1]), x[3], TimesTangent3(x[3]));
    FinishEven(columns, x[0], x[0], x[2], TimesTangent2(x[2]));
}

LANES_FUNCTION Words LoadRow(const std::int16_t* first, const std::int16_t* second, std::size_t row) {
    return LoadRows(first + 8 * row, second + 8 * row);
}

/// As many blocks as there are rows side by side; SECOND may be FIRST again.
LANES_FUNCTION void TransformBlocks(std::int16_t* first, std::int16_t* second,
                                    const std::array<RowFactors, RowClassCount>& factors) {
    constexpr RowClass classes[8] = {Rows04, Rows17, Rows26, Rows35, Rows04, Rows35, Rows26, Rows17};
    constexpr int half = 1 << (rowShift - 1);
    // The first row reaches every sample of its column alike, so that it can bring the half of the column stage along.
    constexpr int bothHalves = half + (1 << (columnShift - 1 + rowShift));
    Words rows[8];
    for (std::size_t row = 0; row < 8; ++row)
        rows[row] = LoadRow(first, second, row);
    const bool isHalf = AreZero(Or(Or(rows[4], rows[5]), Or(rows[6], rows[7])));
    const Words behindFirst = Or(Or(rows[1], rows[2]), Or(rows[3], WithoutFirstOfRow(rows[0])));
    rows[0] = TransformRow(rows[0], factors[Rows04], BroadcastPairSums(bothHalves));
    if (isHalf && AreZero(behindFirst)) {
        // The other rows stay zero, and a row of the first input alone is the same eight times.
        const Words flat = Finished(rows[0]);
        for (std::size_t row = 0; row < 8; ++row)
            StoreRows(first + 8 * row, second + 8 * row, flat);
        return;
    }
    for (std::size_t row = 1; row < 4; ++row)
        rows[row] = TransformRow(rows[row], factors[classes[row]], BroadcastPairSums(half));
    Columns columns;
    if (isHalf) {
        TransformHalfColumns(columns, rows);
    } else {
        for (std::size_t row = 4; row < 8; ++row)
            rows[row] = TransformRow(rows[row], factors[classes[row]], BroadcastPairSums(half));
        TransformColumns(columns, rows);
    }
    for (std::size_t i = 0; i < 4; ++i) {
        StoreRows(first + 8 * i, second + 8 * i, Finished(AddSaturated(columns.even[i], columns.odd[i])));
        StoreRows(first + 8 * (7 - i), second + 8 * (7 - i),
                  Finished(SubtractSaturated(columns.even[i], columns.odd[i])));
    }
}

LANES_TARGET void Transform(std::int16_t* blocks, std::size_t count) {
    static const std::array<RowFactors, RowClassCount>& factors = GetFactors();
    for (; count >= rowsAtOnce; count -= rowsAtOnce, blocks += rowsAtOnce * blockSize)
        TransformBlocks(blocks, blocks + (rowsAtOnce - 1) * blockSize, factors);
    if (count != 0) {
        std::int16_t spare[blockSize];
        std::memcpy(spare, blocks, sizeof(spare));
        TransformBlocks(blocks, spare, factors);
    }
}

} // namespace

namespace InverseDctForms {

InverseDct LANES_SET() {
    return IsSupported() ? Transform : nullptr;
}

} // namespace InverseDctForms

} // namespace ET::Img::Jpg
