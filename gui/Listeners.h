#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace Quorvex::GUI {

class Control;

/// Controls that see the mouse beyond their rectangle, in the order of their entry. A listener may leave, enter another
/// one or drop any other within its call. It must leave before it ends.
class Listeners {
public:
    /// A control that listens already stays where it is.
    void Add(Control& control);
    void Remove(Control& control);
    bool Contains(const Control& control) const;
    /// Calls those that listen at the beginning. The result of the last one called, 0 without any.
    std::int32_t CallAll(const std::function<std::int32_t(Control&)>& call);

private:
    /// A listener that left during a walk leaves a null behind, so that the walk keeps its place.
    std::vector<Control*> m_controls;
    std::size_t m_walks = 0;
};

} // namespace Quorvex::GUI
