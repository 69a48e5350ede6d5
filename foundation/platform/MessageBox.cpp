#include "foundation/platform/MessageBox.h"

#include <atomic>

namespace Quorvex::Platform {

namespace {
// Atomic, since a worker may show a text while the main thread takes its own presenter back.
std::atomic<MessageBoxPresenter> presenterInUse = nullptr;
} // namespace

MessageBoxPresenter SetMessageBoxPresenter(MessageBoxPresenter presenter) noexcept {
    return presenterInUse.exchange(presenter);
}

void ShowMessageBox(const String& title, const String& text) {
    const MessageBoxPresenter presenter = presenterInUse;
    (presenter != nullptr ? presenter : &ShowPlainMessageBox)(title, text);
}

} // namespace Quorvex::Platform
