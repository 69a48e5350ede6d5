#pragma once

#include "data/ImageUserRepresentation.h"

namespace Quorvex::Data {

/// The stored range of an integer type stands for the physical range MINIMUM to MAXIMUM that a plug-in reports. A float
/// sample is the physical value itself; its normalised value still spans the range. Equal limits are not checked: the
/// division gives infinities.
class ImageUserRepresentationFromMinMaxValues final : public IImageUserRepresentation {
public:
    ImageUserRepresentationFromMinMaxValues(ColorTypeEnum::Value type, double minimum, double maximum)
        : ColorType(type), Minimum(minimum), Maximum(maximum) {}

    /// A type outside the list raises Exception with a text that ends in the operation's name; the other direction too.
    double GetUserValueFromInternalValue(double internalValue) const override;
    double GetInternalValueFromUserValue(double userValue) const override;
    double GetUserValueFromNormalizedFloatValue(double normalized) const override;
    double GetNormalizedFloatFromUserValue(double userValue) const override;

private:
    ColorTypeEnum::Value ColorType;
    double Minimum;
    double Maximum;
};

} // namespace Quorvex::Data
