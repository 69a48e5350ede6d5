#include "gui/window/x11/X11SharedMemory.h"

#include "foundation/Report.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <algorithm>

namespace Quorvex::GUI {

bool X11SharedMemory::Reserve(std::size_t sizeBytes) {
    // A block four times too large is given back, so that a window once shown on a wall does not keep its memory.
    if (sizeBytes <= m_sizeBytes && m_sizeBytes / 4 <= sizeBytes)
        return true;
    Release();
    // A window that grows under the mouse would otherwise need another block with every pixel.
    return Allocate(sizeBytes + sizeBytes / 4) && Attach();
}

bool X11SharedMemory::Allocate(std::size_t sizeBytes) {
    m_segment.shmid = shmget(IPC_PRIVATE, sizeBytes, IPC_CREAT | 0600);
    if (m_segment.shmid == -1) {
        ReportFailure(__LINE__, "shmget");
        return false;
    }
    void* const address = shmat(m_segment.shmid, nullptr, 0);
    if (address == reinterpret_cast<void*>(-1)) {
        ReportFailure(__LINE__, "shmat");
        shmctl(m_segment.shmid, IPC_RMID, nullptr);
        return false;
    }
    m_segment.shmaddr = static_cast<char*>(address);
    m_segment.readOnly = 1;
    m_sizeBytes = sizeBytes;
    return true;
}

bool X11SharedMemory::Attach() {
    X11ErrorTrap trap(m_connection);
    const bool isSent = XShmAttach(m_connection.Get(), &m_segment) != 0;
    const auto error = trap.Synchronize();
    // From here on the block goes with its last user, however the program ends.
    shmctl(m_segment.shmid, IPC_RMID, nullptr);
    if (isSent && error == 0)
        return true;
    ReportFailure(__LINE__, "XShmAttach", error);
    shmdt(m_segment.shmaddr);
    m_segment = {};
    m_sizeBytes = 0;
    return false;
}

void X11SharedMemory::Release() {
    if (m_segment.shmaddr == nullptr)
        return;
    if (!m_connection.IsGone())
        XShmDetach(m_connection.Get(), &m_segment);
    shmdt(m_segment.shmaddr);
    m_segment = {};
    m_sizeBytes = 0;
    m_pendingPuts = 0;
}

} // namespace Quorvex::GUI
