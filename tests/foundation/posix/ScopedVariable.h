#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace Quorvex::Test {

/// Sets a variable of the environment, or takes it away, for the time of a scope.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const char* value) : m_name(name) {
        if (const char* former = std::getenv(name))
            m_former = former;
        Set(value);
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;
    ~ScopedVariable() { Set(m_former ? m_former->c_str() : nullptr); }

private:
    void Set(const char* value) {
        if (value != nullptr)
            setenv(m_name, value, 1);
        else
            unsetenv(m_name);
    }

    const char* m_name;
    std::optional<std::string> m_former;
};

} // namespace Quorvex::Test
