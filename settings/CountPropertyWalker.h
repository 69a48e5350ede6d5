#pragma once

#include "settings/PropertyWalker.h"

#include <cstddef>

namespace Quorvex {

/// Counts the composites of a tree, the one it was started on included. It passes over all values.
class CountPropertyWalker final : public PropertyWalker {
public:
    void Visit(const std::string&, bool) override {}
    void Visit(const std::string&, std::int16_t) override {}
    void Visit(const std::string&, std::int32_t) override {}
    void Visit(const std::string&, std::int64_t) override {}
    void Visit(const std::string&, std::uint8_t) override {}
    void Visit(const std::string&, std::uint16_t) override {}
    void Visit(const std::string&, std::uint32_t) override {}
    void Visit(const std::string&, FixedPoint230) override {}
    void BeginComposite(const std::string&) override { ++m_composites; }
    void EndComposite(const std::string&) override {}

    std::size_t GetCount() const { return m_composites; }

private:
    std::size_t m_composites = 0;
};

} // namespace Quorvex
