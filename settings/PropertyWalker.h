#pragma once

#include "settings/FixedPoint230.h"

#include <concepts>
#include <cstdint>
#include <string>

namespace Quorvex {

/// Visits the properties of a composite in the order of their declaration; the values of a nested composite lie between
/// its BeginComposite and EndComposite. The integers stand in the order of the sample types, and the places that no
/// header needs are taken by the truth value and the fixed point number.
class PropertyWalker {
public:
    virtual void Visit(const std::string& name, bool value) = 0;
    virtual void Visit(const std::string& name, std::int16_t value) = 0;
    virtual void Visit(const std::string& name, std::int32_t value) = 0;
    virtual void Visit(const std::string& name, std::int64_t value) = 0;
    virtual void Visit(const std::string& name, std::uint8_t value) = 0;
    virtual void Visit(const std::string& name, std::uint16_t value) = 0;
    virtual void Visit(const std::string& name, std::uint32_t value) = 0;
    virtual void Visit(const std::string& name, FixedPoint230 value) = 0;
    virtual void BeginComposite(const std::string& name) = 0;
    virtual void EndComposite(const std::string& name) = 0;

protected:
    ~PropertyWalker() = default;
};

/// The types that a walker visits. They are also those that have a binary form; settings of other types live as text
/// alone.
template <class T>
concept WalkableValue = std::same_as<T, bool> || std::same_as<T, std::int16_t> || std::same_as<T, std::int32_t> ||
    std::same_as<T, std::int64_t> || std::same_as<T, std::uint8_t> || std::same_as<T, std::uint16_t> ||
    std::same_as<T, std::uint32_t> || std::same_as<T, FixedPoint230>;

} // namespace Quorvex
