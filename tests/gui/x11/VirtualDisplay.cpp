#include "tests/gui/x11/VirtualDisplay.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Quorvex::GUI {

VirtualDisplay::VirtualDisplay(const std::string& screen) {
    int ready[2];
    if (pipe(ready) != 0)
        return;
    m_process = fork();
    if (m_process == 0) {
        close(ready[0]);
        Start(screen, ready[1]);
    }
    close(ready[1]);
    // The server takes a free number and tells it when it listens; nothing comes if there is no server.
    char sign = 0;
    while (read(ready[0], &sign, 1) == 1 && sign != '\n')
        m_name += sign;
    close(ready[0]);
    if (!m_name.empty())
        m_name = ":" + m_name;
    else
        Kill();
}

/// In the new process: becomes the server.
void VirtualDisplay::Start(const std::string& screen, int readyDescriptor) {
    // A test that crashes takes its server along.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int nothing = open("/dev/null", O_RDWR);
    dup2(nothing, STDOUT_FILENO);
    dup2(nothing, STDERR_FILENO);
    // Without a client for a moment the server would start over, and turn connections away meanwhile.
    const auto descriptor = std::to_string(readyDescriptor);
    execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", screen.c_str(), "-nolisten", "tcp",
           "-noreset", static_cast<char*>(nullptr));
    _exit(127);
}

void VirtualDisplay::Kill() {
    if (m_process <= 0)
        return;
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
    m_process = -1;
    m_name.clear();
}

VirtualDisplay& VirtualDisplay::Shared() {
    static VirtualDisplay display;
    return display;
}

} // namespace Quorvex::GUI
