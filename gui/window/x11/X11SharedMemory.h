#pragma once

#include "gui/window/x11/X11Connection.h"

#include <cstddef>
#include <cstdint>

namespace Quorvex::GUI {

/// A block of memory that the program and the server share (MIT-SHM). The server reads from it after a put until it
/// says that it is done; until then the block is busy and must not be written.
class X11SharedMemory {
public:
    explicit X11SharedMemory(const X11Connection& connection) : m_connection(connection) {}
    ~X11SharedMemory() { Release(); }
    X11SharedMemory(const X11SharedMemory&) = delete;
    X11SharedMemory& operator=(const X11SharedMemory&) = delete;

    /// Makes room for that many bytes; the content is lost if that takes another block. False where the system or the
    /// server refuses, which is reported by the call's name.
    bool Reserve(std::size_t sizeBytes);
    std::uint8_t* GetBytes() const { return reinterpret_cast<std::uint8_t*>(m_segment.shmaddr); }
    std::size_t GetSize() const { return m_sizeBytes; }
    XShmSegmentInfo& GetSegment() { return m_segment; }

    bool IsBusy() const { return m_pendingPuts != 0; }
    void BeginPut() { ++m_pendingPuts; }
    void EndPut() { m_pendingPuts -= m_pendingPuts > 0 ? 1 : 0; }
    /// The answer was lost.
    void ForgetPuts() { m_pendingPuts = 0; }

private:
    bool Allocate(std::size_t sizeBytes);
    bool Attach();
    void Release();

    const X11Connection& m_connection;
    XShmSegmentInfo m_segment{};
    std::size_t m_sizeBytes = 0;
    std::uint32_t m_pendingPuts = 0;
};

} // namespace Quorvex::GUI
