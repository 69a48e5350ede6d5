#include "tests/data/SampleTypes.h"

#include <cmath>
#include <limits>

using namespace Quorvex;
using namespace Quorvex::Data;
using namespace Quorvex::Data::Test;

namespace {

struct Aspect {
    double x, y;
};

Aspect AspectAfter(double xResolution, double yResolution) {
    Image<std::uint8_t> image;
    image.PixelScaleX = 3.0;
    image.PixelScaleY = 5.0;
    image.SetPixelAspect(xResolution, yResolution);
    return {image.PixelScaleX, image.PixelScaleY};
}

} // namespace

TEST(ImageBase, StartsWithSquarePixelsWithoutAlpha) {
    const Image<std::uint8_t> image;
    EXPECT_EQ(image.PixelScaleX, 1.0);
    EXPECT_EQ(image.PixelScaleY, 1.0);
    EXPECT_EQ(image.HasAlpha, 0u);
}

TEST(ImageBase, PixelAspectGivesTheCoarserAxisTheLargerScale) {
    const Aspect aspect = AspectAfter(2835, 5670);
    EXPECT_EQ(aspect.x, 2.0);
    EXPECT_EQ(aspect.y, 1.0);
    EXPECT_EQ(AspectAfter(5670, 2835).y, 2.0);
    EXPECT_EQ(AspectAfter(300, 300).x, 1.0);
}

TEST(ImageBase, PixelAspectOfZeroOrNoNumberChangesNothing) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const auto& [x, y] :
         {Aspect{0, 2835}, Aspect{2835, 0}, Aspect{0, 0}, Aspect{-0.0, 1}, Aspect{nan, 1}, Aspect{1, nan}}) {
        const Aspect aspect = AspectAfter(x, y);
        EXPECT_EQ(aspect.x, 3.0) << x << " " << y;
        EXPECT_EQ(aspect.y, 5.0) << x << " " << y;
    }
}

TEST(ImageBase, PixelAspectOfANegativeResolutionIsNegative) {
    const Aspect aspect = AspectAfter(-100, 50);
    EXPECT_EQ(aspect.x, -1.0);
    EXPECT_EQ(aspect.y, 2.0);
    EXPECT_EQ(AspectAfter(50, -100).x, 2.0);
    EXPECT_EQ(AspectAfter(50, -100).y, -1.0);
}

TEST(ImageBase, UserRepresentationIsTheDefaultOfTheType) {
    const Image<std::int16_t> image;
    ASSERT_TRUE(image.GetImageUserRepresentation());
    EXPECT_EQ(image.GetImageUserRepresentation()->GetUserValueFromNormalizedFloatValue(1), 32767);
}

TEST(ImageBase, UserRepresentationCanBeReplacedButNotRemoved) {
    Image<std::uint8_t> image;
    SharedPtr<IImageUserRepresentation> other(new DefaultImageUserRepresentation(ColorTypeEnum::Float32));
    image.SetImageUserRepresentation(other);
    EXPECT_EQ(image.GetImageUserRepresentation(), other);
    EXPECT_EQ(RaisedText([&] { image.SetImageUserRepresentation(nullptr); }),
              "SetImageUserRepresentation: p is nullptr");
    EXPECT_EQ(image.GetImageUserRepresentation(), other);
}

TEST(ImageBase, HandsOutPointersToItselfOnlyWhenManaged) {
    Image<std::uint8_t> alone;
    try {
        alone.SharedPtrFromThis();
        ADD_FAILURE() << "an image without owner gave a pointer";
    } catch (const std::exception& exception) {
        EXPECT_STREQ(exception.what(), "SharedPtrFromthis: this must be managed by SharedPtr");
    }
    const auto managed = CreateImage(ColorTypeEnum::UInt8, 1, 1);
    EXPECT_EQ(managed->SharedPtrFromThis(), managed);
}

TEST(ImageBase, TypeTagIsOneConstantForAllImages) {
    const Image<std::uint8_t> grey;
    const Image<ColorBGRA<double>> color;
    EXPECT_STREQ(grey.TypeTag(), "ImageBase");
    EXPECT_EQ(grey.TypeTag(), color.TypeTag());
}

TEST(ImageBase, ImageInMemoryHoldsNoContextObjects) {
    Image<std::uint8_t> image;
    EXPECT_TRUE(image.DeleteContextObjects());
}

TEST(ColorType, ValuesNamesAndSizesAreTheFixedTable) {
    struct Row {
        std::uint32_t value;
        const char* name;
        std::size_t bytes;
        bool isColor;
    };
    static constexpr Row table[] = {
        {0, "SInt8", 1, false},        {1, "SInt16", 2, false},       {2, "SInt32", 4, false},
        {3, "SInt64", 8, false},       {4, "UInt8", 1, false},        {5, "UInt16", 2, false},
        {6, "UInt32", 4, false},       {7, "UInt64", 8, false},       {8, "Float32", 4, false},
        {9, "Float64", 8, false},      {10, "BGRASInt8", 4, true},    {11, "BGRASInt16", 8, true},
        {12, "BGRASInt32", 16, true},  {13, "BGRASInt64", 32, true},  {14, "BGRAUInt8", 4, true},
        {15, "BGRAUInt16", 8, true},   {16, "BGRAUInt32", 16, true},  {17, "BGRAUInt64", 32, true},
        {18, "BGRAFloat32", 16, true}, {19, "BGRAFloat64", 32, true},
    };
    static_assert(std::size(table) == ColorTypeEnum::Count);
    for (const Row& row : table)
        Dispatch(static_cast<ColorTypeEnum::Value>(row.value), "outside", [&](auto tag) {
            using Tag = decltype(tag);
            EXPECT_EQ(std::uint32_t{Tag::Traits::type}, row.value);
            EXPECT_STREQ(Tag::Traits::typeName, row.name);
            EXPECT_EQ(sizeof(typename Tag::Sample), row.bytes) << row.name;
            EXPECT_EQ(Tag::Traits::isColor, row.isColor) << row.name;
            EXPECT_EQ(Image<typename Tag::Sample>().ColorType, row.value);
        });
}

TEST(ImageExpression, TagsNameTheImageOfEachSampleTypeAndCarryNothing) {
    for (std::uint32_t type = 0; type < ColorTypeEnum::Count; ++type)
        Dispatch(static_cast<ColorTypeEnum::Value>(type), "outside", [&](auto tag) {
            using Tested = Image<typename decltype(tag)::Sample>;
            using Tag = typename Info<Tested>::ImageExpr;
            EXPECT_TRUE((std::is_base_of_v<Tag, Tested>)) << type;
            EXPECT_TRUE((std::is_base_of_v<ImageExpr<Tag>, Tested>)) << type;
            EXPECT_TRUE((std::is_base_of_v<ColorTypeEnum, Tested>)) << type;
            EXPECT_TRUE(std::is_empty_v<Tag> && std::is_empty_v<ImageExpr<Tag>>) << type;
            // A function for images of one type alone takes just these.
            using Other = std::conditional_t<std::is_same_v<Tested, Image<float>>, Image<double>, Image<float>>;
            EXPECT_FALSE((std::is_convertible_v<Other*, ImageExpr<Tag>*>)) << type;
        });
}

TEST(ColorType, DispatchOutsideTheListRaisesTheCallersText) {
    for (const std::uint32_t value : {20u, 0xFFFFFFFFu})
        EXPECT_EQ(RaisedText([&] { Dispatch(static_cast<ColorTypeEnum::Value>(value), "outside", [](auto) {}); }),
                  "outside");
}

TEST(ColorBGRA, ChannelsLieInMemoryOrderBlueGreenRedAlpha) {
    const ColorBGRA<std::uint8_t> color{1, 2, 3, 4};
    std::uint8_t bytes[4];
    std::memcpy(bytes, &color, 4);
    EXPECT_EQ(bytes[0], 1);
    EXPECT_EQ(bytes[1], 2);
    EXPECT_EQ(bytes[2], 3);
    EXPECT_EQ(bytes[3], 4);
}
