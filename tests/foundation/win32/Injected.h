#pragma once

#include <utility>

namespace Quorvex::Test {

/// Puts a value in the place of another for the time of a scope.
template <class T>
class Injected {
public:
    Injected(T& place, T value) : m_place(place), m_former(std::exchange(place, std::move(value))) {}
    Injected(const Injected&) = delete;
    Injected& operator=(const Injected&) = delete;
    ~Injected() { m_place = std::move(m_former); }

private:
    T& m_place;
    T m_former;
};

} // namespace Quorvex::Test
