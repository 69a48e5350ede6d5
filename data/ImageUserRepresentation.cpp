#include "data/ImageUserRepresentation.h"

#include "data/Dispatch.h"

#include <limits>

namespace Quorvex::Data {

namespace {

/// Smallest stored value and reciprocal of the span of an integer type. The reciprocals are the 64-bit floats nearest
/// to 1/255, 1/65535 and 1/4294967295, so that a product rounds alike on every machine.
template <class T>
struct Range {
    static constexpr auto minimum = static_cast<double>(std::numeric_limits<T>::min());
    static constexpr double span = sizeof(T) == 1 ? 255.0 : sizeof(T) == 2 ? 65535.0 : 4294967295.0;
    static constexpr double reciprocal = sizeof(T) == 1   ? 0.00392156862745098
                                         : sizeof(T) == 2 ? 1.5259021896696422e-05
                                                          : 2.3283064370807974e-10;
};

/// 64-bit limits do not fit a 64-bit float; they are kept in the widest float the machine has.
template <class T>
struct WideRange {
    static constexpr auto minimum = static_cast<long double>(std::numeric_limits<T>::min());
    static constexpr auto maximum = static_cast<long double>(std::numeric_limits<T>::max());
};

} // namespace

double DefaultImageUserRepresentation::GetUserValueFromNormalizedFloatValue(double normalized) const {
    constexpr const char* failure =
        "Quorvex::Data::DefaultImageUserRepresentation::GetUserValueFromNormalizedFloatValue";
    return Dispatch(ColorType, failure, [&](auto tag) -> double {
        using Channel = typename decltype(tag)::Channel;
        if constexpr (std::is_floating_point_v<Channel>)
            return normalized;
        else if constexpr (sizeof(Channel) == 8)
            return static_cast<double>(WideRange<Channel>::minimum +
                                       (WideRange<Channel>::maximum - WideRange<Channel>::minimum) * normalized);
        else
            return normalized * Range<Channel>::span + Range<Channel>::minimum;
    });
}

double DefaultImageUserRepresentation::GetNormalizedFloatFromUserValue(double userValue) const {
    constexpr const char* failure = "Quorvex::Data::DefaultImageUserRepresentation::GetNormalizedFloatFromUserValue";
    return Dispatch(ColorType, failure, [&](auto tag) -> double {
        using Channel = typename decltype(tag)::Channel;
        if constexpr (std::is_floating_point_v<Channel>)
            return userValue;
        else if constexpr (sizeof(Channel) == 8)
            return static_cast<double>((userValue - WideRange<Channel>::minimum) /
                                       (WideRange<Channel>::maximum - WideRange<Channel>::minimum));
        else
            return (userValue - Range<Channel>::minimum) * Range<Channel>::reciprocal;
    });
}

} // namespace Quorvex::Data
