#include "gui/window/x11/X11PostedMessages.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"

#include <sys/eventfd.h>
#include <unistd.h>

namespace Quorvex::GUI {

X11PostedMessages::X11PostedMessages() : m_descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (m_descriptor == -1) {
        ReportFailure(__LINE__, "eventfd");
        throw Exception(__LINE__, "eventfd");
    }
}

X11PostedMessages::~X11PostedMessages() {
    close(m_descriptor);
}

void X11PostedMessages::Add(const PostedMessage& message) {
    std::lock_guard guard(m_mutex);
    m_messages.push_back(message);
    if (m_messages.size() > 1)
        return;
    const std::uint64_t one = 1;
    if (write(m_descriptor, &one, sizeof(one)) != sizeof(one))
        ReportFailure(__LINE__, "write");
}

std::optional<PostedMessage> X11PostedMessages::Take() {
    std::lock_guard guard(m_mutex);
    if (m_messages.empty())
        return std::nullopt;
    const auto message = m_messages.front();
    m_messages.pop_front();
    if (m_messages.empty()) {
        std::uint64_t count = 0;
        if (read(m_descriptor, &count, sizeof(count)) != sizeof(count))
            ReportFailure(__LINE__, "read");
    }
    return message;
}

} // namespace Quorvex::GUI
