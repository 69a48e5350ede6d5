#include "view/ImageCoordinates.h"

#include "foundation/Exception.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using namespace Quorvex::View;
using Platform::Video::ImageRect;

namespace {

ImageRect RectOf(std::int32_t x0, std::int32_t y0, std::int32_t x1, std::int32_t y1, std::int32_t rotation) {
    ImageRect rect;
    rect.x0 = x0;
    rect.y0 = y0;
    rect.x1 = x1;
    rect.y1 = y1;
    rect.rotation = rotation;
    return rect;
}

struct Corner {
    std::int32_t rotation;
    double x;
    double y;
};

} // namespace

TEST(ImageCoordinates, PutTheTopLeftCornerOfTheImageWhereTheRotationTurnsIt) {
    // The rectangle spans columns 10 to 50 and rows 20 to 100; counterclockwise the corner goes down first.
    for (const Corner& corner : {Corner{0, 10, 20}, {90, 10, 100}, {180, 50, 100}, {270, 50, 20}}) {
        const ImageRect rect = RectOf(10, 20, 50, 100, corner.rotation);
        const ImageCoordinates coordinates{rect, 8, 4};
        EXPECT_EQ(coordinates.ImageToScreenX(0, 0), corner.x) << corner.rotation;
        EXPECT_EQ(coordinates.ImageToScreenY(0, 0), corner.y) << corner.rotation;
        EXPECT_EQ(coordinates.ScreenToImageX(corner.x, corner.y), 0) << corner.rotation;
        EXPECT_EQ(coordinates.ScreenToImageY(corner.x, corner.y), 0) << corner.rotation;
    }
}

TEST(ImageCoordinates, AreInversesOfEachOther) {
    for (const std::int32_t rotation : {0, 90, 180, 270})
        for (const auto& [x0, x1] : {std::pair{-7, 90}, {90, -7}}) {
            const ImageRect rect = RectOf(x0, 3, x1, 41, rotation);
            const ImageCoordinates coordinates{rect, 13, 17};
            for (const auto& [u, v] : {std::pair{0.0, 17.0}, {6.5, 2.25}, {13.0, 0.5}}) {
                const double x = coordinates.ImageToScreenX(u, v);
                const double y = coordinates.ImageToScreenY(u, v);
                EXPECT_NEAR(coordinates.ScreenToImageX(x, y), u, 1e-12) << rotation;
                EXPECT_NEAR(coordinates.ScreenToImageY(x, y), v, 1e-12) << rotation;
            }
        }
}

TEST(ImageCoordinates, RaiseForAnyOtherRotation) {
    const ImageRect rect = RectOf(0, 0, 10, 10, 45);
    const ImageCoordinates coordinates{rect, 1, 1};
    EXPECT_THROW(coordinates.ScreenToImageX(0, 0), Exception);
    EXPECT_THROW(coordinates.ScreenToImageY(0, 0), Exception);
    EXPECT_THROW(coordinates.ImageToScreenX(0, 0), Exception);
    EXPECT_THROW(coordinates.ImageToScreenY(0, 0), Exception);
}
