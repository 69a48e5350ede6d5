#include "data/ImageUserRepresentationFromMinMaxValues.h"
#include "tests/data/SampleTypes.h"

#include <cmath>
#include <limits>

using namespace Quorvex;
using namespace Quorvex::Data;
using namespace Quorvex::Data::Test;

namespace {

/// Lowest and highest stored value of a sample type, as the nearest 64-bit floats.
struct Limits {
    double lowest, highest;
};
constexpr Limits greyLimits[10] = {{-128, 127},
                                   {-32768, 32767},
                                   {-2147483648.0, 2147483647.0},
                                   {-9223372036854775808.0, 9223372036854775807.0},
                                   {0, 255},
                                   {0, 65535},
                                   {0, 4294967295.0},
                                   {0, 18446744073709551615.0},
                                   {0, 1},
                                   {0, 1}};

ColorTypeEnum::Value Type(std::uint32_t value) {
    return static_cast<ColorTypeEnum::Value>(value);
}

constexpr std::uint32_t outsideTypes[] = {20, 30, 0xFFFFFFFF};

} // namespace

TEST(DefaultUserRepresentation, NormalizedLimitsAreTheLimitsOfEachType) {
    for (std::uint32_t type = 0; type < ColorTypeEnum::Count; ++type) {
        const DefaultImageUserRepresentation representation(Type(type));
        const Limits limits = greyLimits[type % 10];
        EXPECT_EQ(representation.GetUserValueFromNormalizedFloatValue(0), limits.lowest) << type;
        EXPECT_EQ(representation.GetUserValueFromNormalizedFloatValue(1), limits.highest) << type;
        EXPECT_EQ(representation.GetNormalizedFloatFromUserValue(limits.lowest), 0) << type;
        EXPECT_NEAR(representation.GetNormalizedFloatFromUserValue(limits.highest), 1, 1e-15) << type;
    }
}

TEST(DefaultUserRepresentation, FormulasOfTheNarrowIntegersAreExact) {
    for (const double n : {0.0, 0.1, 1 / 3.0, 0.5, 0.7, 1.0, -0.25, 1.5}) {
        const auto user = [&](std::uint32_t type) {
            return DefaultImageUserRepresentation(Type(type)).GetUserValueFromNormalizedFloatValue(n);
        };
        EXPECT_EQ(user(0), n * 255.0 - 128.0);
        EXPECT_EQ(user(1), n * 65535.0 - 32768.0);
        EXPECT_EQ(user(2), n * 4294967295.0 - 2147483648.0);
        EXPECT_EQ(user(4), n * 255.0);
        EXPECT_EQ(user(5), n * 65535.0);
        EXPECT_EQ(user(6), n * 4294967295.0);
        EXPECT_EQ(user(8), n);
        EXPECT_EQ(user(9), n);
    }
}

TEST(DefaultUserRepresentation, InverseMultipliesByThePrintedReciprocals) {
    for (const double u : {-128.0, -1.0, 0.0, 1.0, 77.0, 128.0, 255.0, 1000.5}) {
        const auto normalized = [&](std::uint32_t type) {
            return DefaultImageUserRepresentation(Type(type)).GetNormalizedFloatFromUserValue(u);
        };
        EXPECT_EQ(normalized(0), (u + 128.0) * 0.00392156862745098);
        EXPECT_EQ(normalized(1), (u + 32768.0) * 1.5259021896696422e-05);
        EXPECT_EQ(normalized(2), (u + 2147483648.0) * 2.3283064370807974e-10);
        EXPECT_EQ(normalized(4), u * 0.00392156862745098);
        EXPECT_EQ(normalized(5), u * 1.5259021896696422e-05);
        EXPECT_EQ(normalized(6), u * 2.3283064370807974e-10);
        EXPECT_EQ(normalized(8), u);
        EXPECT_EQ(normalized(9), u);
    }
}

TEST(DefaultUserRepresentation, WideIntegersSpanTheirLimits) {
    const DefaultImageUserRepresentation isSigned(ColorTypeEnum::SInt64), isUnsigned(ColorTypeEnum::UInt64);
    EXPECT_EQ(isSigned.GetUserValueFromNormalizedFloatValue(0.5),
              std::numeric_limits<long double>::digits >= 64 ? -0.5 : 0);
    EXPECT_EQ(isUnsigned.GetUserValueFromNormalizedFloatValue(0.5), 9223372036854775808.0);
    EXPECT_NEAR(isSigned.GetNormalizedFloatFromUserValue(0), 0.5, 1e-16);
    EXPECT_NEAR(isUnsigned.GetNormalizedFloatFromUserValue(4611686018427387904.0), 0.25, 1e-16);
}

TEST(DefaultUserRepresentation, MiddleOfUInt8) {
    EXPECT_NEAR(DefaultImageUserRepresentation(ColorTypeEnum::UInt8).GetNormalizedFloatFromUserValue(128), 0.50196,
                5e-6);
}

TEST(DefaultUserRepresentation, StoredValueIsTheUsersValue) {
    for (std::uint32_t type = 0; type < ColorTypeEnum::Count; ++type) {
        const DefaultImageUserRepresentation representation(Type(type));
        EXPECT_EQ(representation.GetUserValueFromInternalValue(77.25), 77.25);
        EXPECT_EQ(representation.GetInternalValueFromUserValue(-3.5), -3.5);
    }
}

TEST(DefaultUserRepresentation, FloatsPassThroughAllFourOperations) {
    for (const auto type :
         {ColorTypeEnum::Float32, ColorTypeEnum::Float64, ColorTypeEnum::BGRAFloat32, ColorTypeEnum::BGRAFloat64}) {
        const DefaultImageUserRepresentation representation(type);
        for (const double value : {-1e300, 0.1, 7.0}) {
            EXPECT_EQ(representation.GetUserValueFromInternalValue(value), value);
            EXPECT_EQ(representation.GetInternalValueFromUserValue(value), value);
            EXPECT_EQ(representation.GetUserValueFromNormalizedFloatValue(value), value);
            EXPECT_EQ(representation.GetNormalizedFloatFromUserValue(value), value);
        }
    }
}

TEST(DefaultUserRepresentation, ColourBehavesAsItsGreySampleType) {
    for (std::uint32_t type = 0; type < 10; ++type) {
        const DefaultImageUserRepresentation grey(Type(type)), color(Type(type + 10));
        for (const double value : {0.0, 0.3, 1.0, 100.0}) {
            EXPECT_EQ(grey.GetUserValueFromNormalizedFloatValue(value),
                      color.GetUserValueFromNormalizedFloatValue(value));
            EXPECT_EQ(grey.GetNormalizedFloatFromUserValue(value), color.GetNormalizedFloatFromUserValue(value));
        }
    }
}

TEST(DefaultUserRepresentation, TypeOutsideTheListIsRefused) {
    for (const std::uint32_t type : outsideTypes) {
        const DefaultImageUserRepresentation representation(Type(type));
        EXPECT_EQ(RaisedText([&] { representation.GetUserValueFromNormalizedFloatValue(0); }),
                  "Quorvex::Data::DefaultImageUserRepresentation::GetUserValueFromNormalizedFloatValue");
        EXPECT_EQ(RaisedText([&] { representation.GetNormalizedFloatFromUserValue(0); }),
                  "Quorvex::Data::DefaultImageUserRepresentation::GetNormalizedFloatFromUserValue");
    }
}

TEST(MinMaxUserRepresentation, IntegerRangeShowsAsThePhysicalRange) {
    for (const auto type : {ColorTypeEnum::UInt16, ColorTypeEnum::BGRAUInt16}) {
        const ImageUserRepresentationFromMinMaxValues representation(type, -1000, 3000);
        EXPECT_EQ(representation.GetUserValueFromInternalValue(0), -1000);
        EXPECT_NEAR(representation.GetUserValueFromInternalValue(65535), 3000, 1e-9);
        EXPECT_EQ(representation.GetInternalValueFromUserValue(-1000), 0);
        EXPECT_EQ(representation.GetInternalValueFromUserValue(3000), 65535);
        EXPECT_NEAR(representation.GetInternalValueFromUserValue(1000), 32767.5, 1e-9);
    }
}

TEST(MinMaxUserRepresentation, SignedRangeStartsAtItsLowestValue) {
    const ImageUserRepresentationFromMinMaxValues representation(ColorTypeEnum::SInt8, 0, 1);
    EXPECT_EQ(representation.GetUserValueFromInternalValue(-128), 0);
    EXPECT_NEAR(representation.GetUserValueFromInternalValue(127), 1, 1e-15);
    EXPECT_EQ(representation.GetInternalValueFromUserValue(0), -128);
}

TEST(MinMaxUserRepresentation, NormalizedValuesSpanTheRangeForEveryType) {
    for (std::uint32_t type = 0; type < ColorTypeEnum::Count; ++type) {
        const ImageUserRepresentationFromMinMaxValues representation(Type(type), -1000, 3000);
        EXPECT_EQ(representation.GetUserValueFromNormalizedFloatValue(0), -1000);
        EXPECT_EQ(representation.GetUserValueFromNormalizedFloatValue(0.25), 0);
        EXPECT_EQ(representation.GetUserValueFromNormalizedFloatValue(1), 3000);
        EXPECT_EQ(representation.GetNormalizedFloatFromUserValue(-1000), 0);
        EXPECT_EQ(representation.GetNormalizedFloatFromUserValue(3000), 1);
    }
}

TEST(MinMaxUserRepresentation, FloatSamplesAreThePhysicalValue) {
    for (const auto type :
         {ColorTypeEnum::Float32, ColorTypeEnum::Float64, ColorTypeEnum::BGRAFloat32, ColorTypeEnum::BGRAFloat64}) {
        const ImageUserRepresentationFromMinMaxValues representation(type, -1000, 3000);
        EXPECT_EQ(representation.GetUserValueFromInternalValue(12.5), 12.5);
        EXPECT_EQ(representation.GetInternalValueFromUserValue(12.5), 12.5);
    }
}

TEST(MinMaxUserRepresentation, EqualLimitsGiveInfinities) {
    const ImageUserRepresentationFromMinMaxValues representation(ColorTypeEnum::UInt8, 5, 5);
    EXPECT_TRUE(std::isinf(representation.GetNormalizedFloatFromUserValue(6)));
    EXPECT_EQ(representation.GetUserValueFromNormalizedFloatValue(0.5), 5);
}

TEST(MinMaxUserRepresentation, TypeOutsideTheListIsRefused) {
    for (const std::uint32_t type : outsideTypes) {
        const ImageUserRepresentationFromMinMaxValues representation(Type(type), 0, 1);
        EXPECT_EQ(RaisedText([&] { representation.GetUserValueFromInternalValue(0); }),
                  "IDecoderCOMAsCPPWrapper::ImageUserRepresentationFromMinMaxValues::GetUserValueFromInternalValue");
        EXPECT_EQ(RaisedText([&] { representation.GetInternalValueFromUserValue(0); }),
                  "IDecoderCOMAsCPPWrapper::ImageUserRepresentationFromMinMaxValues::GetInternalValueFromUserValue");
    }
}
