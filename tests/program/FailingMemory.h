#pragma once

#include <cstddef>
#include <cstdint>

namespace Quorvex::App::Test {

/// While it lives, memory runs out once for the workers: of the requests that they make by operator new, those of at
/// least MINIMUM BYTES are counted, and the one with the number PLACE, from 0, fails. The thread that made the object
/// is spared. One object at a time.
class FailingMemory {
public:
    FailingMemory(std::size_t minimumBytes, std::uint32_t place);
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;
    ~FailingMemory();

    /// Whether a request has failed so far.
    bool HasFailed() const;
};

} // namespace Quorvex::App::Test
