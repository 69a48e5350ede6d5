#include "data/ImageUserRepresentationFromMinMaxValues.h"

#include "data/Dispatch.h"

namespace Quorvex::Data {

double ImageUserRepresentationFromMinMaxValues::GetUserValueFromInternalValue(double internalValue) const {
    constexpr const char* failure =
        "IDecoderCOMAsCPPWrapper::ImageUserRepresentationFromMinMaxValues::GetUserValueFromInternalValue";
    return Dispatch(ColorType, failure, [&](auto tag) -> double {
        if constexpr (std::is_floating_point_v<typename decltype(tag)::Channel>)
            return internalValue;
        const DefaultImageUserRepresentation stored(ColorType);
        return GetUserValueFromNormalizedFloatValue(stored.GetNormalizedFloatFromUserValue(internalValue));
    });
}

double ImageUserRepresentationFromMinMaxValues::GetInternalValueFromUserValue(double userValue) const {
    constexpr const char* failure =
        "IDecoderCOMAsCPPWrapper::ImageUserRepresentationFromMinMaxValues::GetInternalValueFromUserValue";
    return Dispatch(ColorType, failure, [&](auto tag) -> double {
        if constexpr (std::is_floating_point_v<typename decltype(tag)::Channel>)
            return userValue;
        const DefaultImageUserRepresentation stored(ColorType);
        return stored.GetUserValueFromNormalizedFloatValue(GetNormalizedFloatFromUserValue(userValue));
    });
}

double ImageUserRepresentationFromMinMaxValues::GetUserValueFromNormalizedFloatValue(double normalized) const {
    return (Maximum - Minimum) * normalized + Minimum;
}

double ImageUserRepresentationFromMinMaxValues::GetNormalizedFloatFromUserValue(double userValue) const {
    return (userValue - Minimum) / (Maximum - Minimum);
}

} // namespace Quorvex::Data
