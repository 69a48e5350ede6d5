#include "tests/video/software/SampleImages.h"
#include "video/software/kernels/FilterRows.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace Quorvex::Platform::Video::Software {

/// The inner loops for processors that nothing is known about, which builds for others compile here alone.
template <class Sample>
struct PlainLanesRows {
    static const FilterRows<Sample>& Rows();
};

} // namespace Quorvex::Platform::Video::Software

#include "video/software/kernels/LanesPlain.inl"

#define LANES_SET PlainLanesRows
#include "video/software/kernels/FilterRows.inl"

namespace Quorvex::Platform::Video::Software {

namespace {

template <class Sample>
class PlainLanesTest : public testing::Test {
protected:
    using Channel = ChannelType<Sample>;

    std::vector<double> RandomDoubles(std::size_t count, double range) {
        std::vector<double> values(count);
        for (double& value : values)
            value = (random.template Next<double>() - 0.25) * range;
        return values;
    }

    RandomSamples random{5};
    const FilterRows<Sample>& plain = PlainLanesRows<Sample>::Rows();
    const FilterRows<Sample>& baseline = BaselineFilterRows<Sample>::Rows();
};

#define QUORVEX_COMMA_TYPE(value, name, sample) , sample
template <class First, class... Rest>
testing::Types<Rest...> WithoutFirst();
using AllSamples = decltype(WithoutFirst<void QUORVEX_SAMPLE_TYPES(QUORVEX_COMMA_TYPE)>());
#undef QUORVEX_COMMA_TYPE
TYPED_TEST_SUITE(PlainLanesTest, AllSamples);

TYPED_TEST(PlainLanesTest, SumsOfRowsAreThoseOfTheBaseline) {
    for (std::size_t rowCount = 1; rowCount < 12; ++rowCount)
        for (const std::size_t count : {1, 4, 7, 8, 9, 63, 64, 65, 1030}) {
            std::vector<std::vector<typename TestFixture::Channel>> samples(rowCount);
            std::vector<const typename TestFixture::Channel*> rows;
            for (auto& row : samples) {
                row.resize(count);
                for (auto& channel : row)
                    channel = this->random.template Next<typename TestFixture::Channel>();
                rows.push_back(row.data());
            }
            const std::vector<double> weights = this->RandomDoubles(rowCount, 1.0);
            std::vector<double> had(count), wanted(count);
            const double magnitude = this->plain.sum(rows.data(), weights.data(), rowCount, 0.5, had.data(), count);
            EXPECT_EQ(magnitude, this->baseline.sum(rows.data(), weights.data(), rowCount, 0.5, wanted.data(), count));
            ASSERT_EQ(had, wanted) << rowCount << " rows of " << count;
        }
}

TYPED_TEST(PlainLanesTest, ResampledRowsAreThoseOfTheBaseline) {
    constexpr std::uint32_t channels = channelCount<TypeParam>;
    for (const std::uint32_t taps : {2u, 3u, 4u, 7u})
        for (const std::uint32_t pixelCount : {1u, 3u, 4u, 5u, 63u, 64u, 65u})
            for (const Overshoot overshoot : {Overshoot::None, Overshoot::Clamp, Overshoot::Wrap}) {
                constexpr std::uint32_t pixels = 40;
                // What no mean of levels leaves, where no clamp follows.
                const bool isMean = overshoot == Overshoot::None;
                std::vector<double> sums = this->RandomDoubles(pixels * channels, 400.0);
                for (double& sum : sums)
                    sum = isMean ? std::clamp(sum, 0.0, 254.0) : sum;
                const std::uint32_t filledUp = (pixelCount + pixelsPerGroup - 1) / pixelsPerGroup * pixelsPerGroup;
                std::vector<std::uint32_t> offsets(filledUp);
                for (std::uint32_t& offset : offsets)
                    offset = this->random.Below(pixels - taps) * channels;
                const std::vector<double> weights(std::size_t(filledUp) * taps, 1.0 / taps);
                const RowToResample row{sums.data(), offsets.data(), weights.data(), taps, pixelCount, 0.4, overshoot};
                const std::size_t groups = filledUp / pixelsPerGroup;
                std::vector<Color> had(pixelCount), wanted(pixelCount);
                std::vector<std::uint32_t> hadUncertain(groups), wantedUncertain(groups);
                hadUncertain.resize(this->plain.resample(row, had.data(), hadUncertain.data()));
                wantedUncertain.resize(this->baseline.resample(row, wanted.data(), wantedUncertain.data()));
                EXPECT_EQ(hadUncertain, wantedUncertain);
                ASSERT_EQ(had, wanted) << taps << " taps, " << pixelCount << " pixels, " << int(overshoot);
            }
}

} // namespace

} // namespace Quorvex::Platform::Video::Software
