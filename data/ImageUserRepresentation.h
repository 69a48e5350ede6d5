#pragma once

#include "data/ColorTypeEnum.h"

namespace Quorvex::Data {

/// Between a stored value, the value normalised to 0..1, and the value that the user reads. Stateless after
/// construction; any thread.
class IImageUserRepresentation {
public:
    virtual ~IImageUserRepresentation() = default;
    virtual double GetUserValueFromInternalValue(double internalValue) const = 0;
    virtual double GetInternalValueFromUserValue(double userValue) const = 0;
    virtual double GetUserValueFromNormalizedFloatValue(double normalized) const = 0;
    virtual double GetNormalizedFloatFromUserValue(double userValue) const = 0;
};

/// The user reads what is stored; 0..1 spans the range of an integer type, and is the value itself for a float.
class DefaultImageUserRepresentation final : public IImageUserRepresentation {
public:
    explicit DefaultImageUserRepresentation(ColorTypeEnum::Value type) : ColorType(type) {}

    double GetUserValueFromInternalValue(double internalValue) const override { return internalValue; }
    double GetInternalValueFromUserValue(double userValue) const override { return userValue; }
    double GetUserValueFromNormalizedFloatValue(double normalized) const override;
    double GetNormalizedFloatFromUserValue(double userValue) const override;

private:
    ColorTypeEnum::Value ColorType;
};

} // namespace Quorvex::Data
