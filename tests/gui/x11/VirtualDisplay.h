#pragma once

#include <string>
#include <sys/types.h>

namespace Quorvex::GUI {

/// An X server in memory with one screen, which ends with the object.
class VirtualDisplay {
public:
    /// The screen as Xvfb takes it: width x height x depth. Without Xvfb the name stays empty.
    explicit VirtualDisplay(const std::string& screen = "800x600x24");
    ~VirtualDisplay() { Kill(); }
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    bool IsRunning() const { return !m_name.empty(); }
    const char* GetName() const { return m_name.c_str(); }
    /// Ends the server at once, as a crash would.
    void Kill();

    /// One server that all tests share; started at the first call.
    static VirtualDisplay& Shared();

private:
    void Start(const std::string& screen, int readyDescriptor);

    pid_t m_process = -1;
    std::string m_name;
};

} // namespace Quorvex::GUI
