#pragma once

#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>

namespace Quorvex::GUI {

/// A message from any thread to a window of the GUI thread.
struct PostedMessage {
    std::uint64_t window;
    std::uint32_t number;
    std::uintptr_t wParam;
    std::intptr_t lParam;
};

/// The queue of posted messages, with a descriptor that a poll wakes up from.
class X11PostedMessages {
public:
    /// Raises Exception "eventfd" where the system refuses.
    X11PostedMessages();
    ~X11PostedMessages();
    X11PostedMessages(const X11PostedMessages&) = delete;
    X11PostedMessages& operator=(const X11PostedMessages&) = delete;

    /// Any thread.
    void Add(const PostedMessage& message);
    /// The oldest message; empty without one. GUI thread.
    std::optional<PostedMessage> Take();
    /// Readable while messages wait.
    int GetDescriptor() const { return m_descriptor; }

private:
    int m_descriptor;
    std::mutex m_mutex; ///< Guards m_messages and that the descriptor agrees with it.
    std::deque<PostedMessage> m_messages;
};

} // namespace Quorvex::GUI
