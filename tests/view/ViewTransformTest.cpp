#include "view/ViewTransform.h"

#include "foundation/Exception.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <random>

using namespace Quorvex;
using namespace Quorvex::View;

namespace {

ViewArea AreaOf(std::int32_t width, std::int32_t height) {
    ViewArea area;
    area.rect = {0, 0, width, height};
    return area;
}

ViewTransform At(double inverseZoom, std::int32_t rotation = 0) {
    ViewTransform transform;
    transform.inverseZoom = inverseZoom;
    transform.rotation = rotation;
    return transform;
}

/// The snapping written down a second time, straight from the rule: round both edges, keep the better one.
std::pair<std::int32_t, std::int32_t> ExpectedEdges(double centreX2, double size, double shift) {
    const auto round = [](double value) {
        return static_cast<std::int32_t>(value > 0 ? value + 0.5 : value < 0 ? value - 0.5 : 0.0);
    };
    const double a = (centreX2 - size) * 0.5 - shift;
    const double b = (centreX2 + size) * 0.5 - shift;
    std::int32_t first = round(a);
    std::int32_t last = round(b);
    const double errorA = std::fabs(a - first);
    const double errorB = std::fabs(b - last);
    if (errorA < errorB)
        last = first + round(size);
    else if (errorB < errorA)
        first = last - round(size);
    else if (size < last - first)
        last = first + round(size);
    else if (size > last - first)
        first = last - round(size);
    return {first, last};
}

} // namespace

TEST(RoundAwayFromZero, LetsTiesGoAwayFromZero) {
    EXPECT_EQ(RoundAwayFromZero(0.5), 1);
    EXPECT_EQ(RoundAwayFromZero(-0.5), -1);
    EXPECT_EQ(RoundAwayFromZero(1.49), 1);
    EXPECT_EQ(RoundAwayFromZero(-1.49), -1);
    EXPECT_EQ(RoundAwayFromZero(0.0), 0);
    EXPECT_EQ(RoundAwayFromZero(-0.0), 0);
}

TEST(RoundAwayFromZero, StaysInsideTheRangeWhoseDistancesFit) {
    EXPECT_EQ(RoundAwayFromZero(1e300), 0x3FFFFFFF);
    EXPECT_EQ(RoundAwayFromZero(-INFINITY), -0x3FFFFFFF);
}

TEST(ViewTransform, PaintsAOnePixelImageOnePixelWideAtTheSmallestZoom) {
    const auto rect = At(16.0).ComputeImageRect({1, 1}, AreaOf(101, 77), 0, 0);
    EXPECT_EQ(rect.x1 - rect.x0, 1);
    EXPECT_EQ(rect.y1 - rect.y0, 1);
}

TEST(ViewTransform, KeepsTheRoundedWidthOfAnEvenImageInAnOddArea) {
    const auto rect = At(1.0).ComputeImageRect({10, 10}, AreaOf(101, 77), 0, 0);
    EXPECT_EQ(rect.x1 - rect.x0, 10);
    EXPECT_EQ(rect.y1 - rect.y0, 10);
}

TEST(ViewTransform, KeepsTheRoundedWidthHoweverTheCentreFalls) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> scroll(-3000, 3000);
    std::uniform_real_distribution<double> exponent(-8, 4);
    std::uniform_int_distribution<std::int32_t> size(1, 4000);
    for (int i = 0; i < 20000; ++i) {
        const double zoom = std::exp2(exponent(random));
        const ImageExtent extent{static_cast<double>(size(random)), static_cast<double>(size(random))};
        const ViewArea area = AreaOf(size(random), size(random));
        const double scrollX = scroll(random);
        const double scrollY = scroll(random);
        const auto rect = At(zoom).ComputeImageRect(extent, area, scrollX, scrollY);
        const double shown = std::max(extent.x / zoom, 1.0);
        const auto [first, last] = ExpectedEdges(area.rect.right, shown, scrollX / zoom);
        ASSERT_NEAR(last - first, shown, 0.5) << "zoom " << zoom << " width " << extent.x;
        // The product with the reciprocal may round differently from the quotient by one unit in the last place.
        ASSERT_NEAR(rect.x0, first, 1) << "zoom " << zoom << " width " << extent.x;
        ASSERT_EQ(rect.x1 - rect.x0, RoundAwayFromZero(shown)) << "zoom " << zoom << " width " << extent.x;
    }
}

TEST(ViewTransform, SnapsAsTheRuleSaysForQuartersOfAPixel) {
    for (int area = 1; area < 12; ++area)
        for (int width = 1; width < 12; ++width)
            for (int quarter = -16; quarter <= 16; ++quarter) {
                const auto rect =
                    At(0.5).ComputeImageRect({width * 0.25 + 0.5, 4}, AreaOf(area, 9), quarter * 0.125, 0);
                const auto [first, last] = ExpectedEdges(area, (width * 0.25 + 0.5) * 2, quarter * 0.25);
                ASSERT_EQ(rect.x0, first) << area << " " << width << " " << quarter;
                ASSERT_EQ(rect.x1, last) << area << " " << width << " " << quarter;
            }
}

TEST(ViewTransform, MirrorsForANegativePixelSize) {
    const auto rect = At(1.0).ComputeImageRect({-10, 6}, AreaOf(100, 100), 0, 0);
    EXPECT_EQ(rect.x0, 55);
    EXPECT_EQ(rect.x1, 45);
    EXPECT_EQ(rect.y0, 47);
    EXPECT_EQ(rect.y1, 53);
}

TEST(ViewTransform, KeepsANarrowMirroredImageOnePixelWide) {
    const auto rect = At(16.0).ComputeImageRect({-1, 1}, AreaOf(100, 100), 0, 0);
    EXPECT_EQ(rect.x1 - rect.x0, -1);
}

TEST(ViewTransform, ExchangesTheExtentsOnTheSides) {
    for (const std::int32_t rotation : {90, 270}) {
        const auto rect = At(1.0, rotation).ComputeImageRect({20, 10}, AreaOf(100, 100), 0, 0);
        EXPECT_EQ(rect.x1 - rect.x0, 10);
        EXPECT_EQ(rect.y1 - rect.y0, 20);
        EXPECT_EQ(rect.rotation, rotation);
    }
}

TEST(ViewTransform, RaisesForAnyOtherRotation) {
    EXPECT_THROW(At(1.0, 45).ComputeImageRect({1, 1}, AreaOf(9, 9), 0, 0), Exception);
    EXPECT_THROW(At(1.0, 360).ShownExtent({1, 1}), Exception);
}

TEST(ViewTransform, CentresInWhatMarginsAndToolbarLeave) {
    ViewArea area = AreaOf(100, 100);
    area.marginLeft = 40;
    area.marginTop = 20;
    area.toolbarHeight = 10;
    const auto rect = At(1.0).ComputeImageRect({20, 10}, area, 0, 0);
    EXPECT_EQ(rect.x0, 60);
    EXPECT_EQ(rect.y0, 60);
}

TEST(ViewTransform, FitsLargeImagesDownAndSmallImagesUp) {
    EXPECT_DOUBLE_EQ(At(1).FittingInverseZoom({2000, 500}, AreaOf(1000, 1000)), 2.0);
    EXPECT_DOUBLE_EQ(At(1).FittingInverseZoom({10, 50}, AreaOf(1000, 1000)), 0.05);
    EXPECT_DOUBLE_EQ(At(1, 90).FittingInverseZoom({2000, 500}, AreaOf(1000, 500)), 4.0);
}

TEST(ViewTransform, FitsToTheLimitWithoutAFaultInAnEmptyArea) {
    EXPECT_EQ(LimitedInverseZoom(At(1).FittingInverseZoom({100, 100}, AreaOf(100, 0))), 16.0);
    EXPECT_EQ(LimitedInverseZoom(At(1).FittingInverseZoom({100, 100}, AreaOf(0, 0))), 16.0);
}

TEST(ViewTransform, LimitsTheZoom) {
    EXPECT_EQ(LimitedInverseZoom(16.0), 16.0);
    EXPECT_EQ(LimitedInverseZoom(17.0), 16.0);
    EXPECT_EQ(LimitedInverseZoom(0.00390625), 0.00390625);
    EXPECT_EQ(LimitedInverseZoom(0.0039), 0.00390625);
    EXPECT_EQ(LimitedInverseZoom(1.5), 1.5);
}

TEST(ViewTransform, KeepsFiftyPixelsInside) {
    const auto [x, y] = At(2.0).ClampScroll({100, 60}, AreaOf(200, 150), 1e9, -1e9);
    EXPECT_DOUBLE_EQ(x, 100 * 0.5 + (200 * 2.0 * 0.5 - 2.0 * 50));
    EXPECT_DOUBLE_EQ(y, -(60 * 0.5 + (150 * 2.0 * 0.5 - 2.0 * 50)));
}

TEST(ViewTransform, GivesTheEndPointsForTheLargestDoubles) {
    const auto [x, y] = At(1.0).ClampScroll({100, 60}, AreaOf(200, 150), DBL_MAX, -DBL_MAX);
    EXPECT_DOUBLE_EQ(x, 100);
    EXPECT_DOUBLE_EQ(y, -55);
}

TEST(ViewTransform, DoesNotClampWhereTheLimitIsNegative) {
    const auto [x, y] = At(1.0).ClampScroll({10, 10}, AreaOf(20, 200), 777, 777);
    EXPECT_EQ(x, 777);
    EXPECT_DOUBLE_EQ(y, 5 + 100 - 50);
}

TEST(ViewTransform, StepsOnAGridOfEighthsOfAnOctave) {
    EXPECT_NEAR(At(1.0).SteppedInverseZoom(8), 0.5, 1e-12);
    EXPECT_NEAR(At(1.0).SteppedInverseZoom(-8), 2.0, 1e-12);
    EXPECT_NEAR(At(0.99).SteppedInverseZoom(1), std::exp2(-1.0 / 8), 1e-12);
}

TEST(ViewTransform, IgnoresAFractionOfAStepThatDoesNotReachTheNextGridPoint) {
    const double onGrid = At(1.0).SteppedInverseZoom(3);
    EXPECT_EQ(At(onGrid).SteppedInverseZoom(0.4), onGrid);
    EXPECT_EQ(At(onGrid).SteppedInverseZoom(-0.4), onGrid);
}

TEST(ViewTransform, ReachesExactlyOneHundredPercentFromTheLowerLimit) {
    double zoom = largestInverseZoom;
    for (int notch = 0; notch < 32; ++notch)
        zoom = At(zoom).SteppedInverseZoom(1);
    EXPECT_EQ(zoom, 1.0);
}

TEST(ViewTransform, KeepsTheCentrePointWhenTurned) {
    ViewTransform transform = At(1.0, 90);
    transform.scrollX = 30;
    transform.scrollY = -20;
    transform.Rotate(180);
    // Image point at the centre: at 90 the screen's x runs along the image's y and the screen's y against its x.
    const double imageX = 20;
    const double imageY = 30;
    EXPECT_EQ(transform.rotation, 180);
    EXPECT_NEAR(transform.scrollX, -imageX, 1e-3);
    EXPECT_NEAR(transform.scrollY, -imageY, 1e-3);
}

TEST(ViewTransform, TurnsBackToWhereItWas) {
    ViewTransform transform = At(1.0);
    transform.scrollX = 12.5;
    transform.scrollY = 7.25;
    for (const std::int32_t degrees : {90, 180, 270, 0})
        transform.Rotate(degrees);
    EXPECT_NEAR(transform.scrollX, 12.5, 1e-3);
    EXPECT_NEAR(transform.scrollY, 7.25, 1e-3);
}
