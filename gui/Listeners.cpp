#include "gui/Listeners.h"

#include <algorithm>

namespace Quorvex::GUI {

namespace {

/// Counts a walk, also when a listener raises.
class Walk {
public:
    explicit Walk(std::size_t& count) : m_count(count) { ++m_count; }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;
    ~Walk() { --m_count; }

private:
    std::size_t& m_count;
};

} // namespace

void Listeners::Add(Control& control) {
    if (!Contains(control))
        m_controls.push_back(&control);
}

void Listeners::Remove(Control& control) {
    const auto found = std::find(m_controls.begin(), m_controls.end(), &control);
    if (found != m_controls.end())
        *found = nullptr;
    if (m_walks == 0)
        std::erase(m_controls, nullptr);
}

bool Listeners::Contains(const Control& control) const {
    return std::find(m_controls.begin(), m_controls.end(), &control) != m_controls.end();
}

std::int32_t Listeners::CallAll(const std::function<std::int32_t(Control&)>& call) {
    std::int32_t result = 0;
    {
        const Walk walk(m_walks);
        const std::size_t count = m_controls.size();
        for (std::size_t i = 0; i < count; ++i)
            if (m_controls[i] != nullptr)
                result = call(*m_controls[i]);
    }
    if (m_walks == 0)
        std::erase(m_controls, nullptr);
    return result;
}

} // namespace Quorvex::GUI
