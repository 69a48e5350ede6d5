#pragma once

#include "foundation/String.h"

namespace Quorvex::Platform {

/// Shows a text to the user and returns once it was read. Any thread may call it.
using MessageBoxPresenter = void (*)(const String& title, const String& text);

/// Puts another presenter in the place of the plain message box; null brings the plain one back. Returns the former
/// one, null for the plain one.
MessageBoxPresenter SetMessageBoxPresenter(MessageBoxPresenter presenter) noexcept;

/// Shows the text with the presenter in use.
void ShowMessageBox(const String& title, const String& text);

/// The system's own message box without an owner; standard error on systems that have none.
void ShowPlainMessageBox(const String& title, const String& text);

} // namespace Quorvex::Platform
