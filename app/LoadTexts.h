#pragma once

#include "foundation/BilingualText.h"

#include <exception>

namespace Quorvex::App {

/// What the view says in place of an image that could not be loaded.
BilingualText DescribeLoadFailure(const std::exception& failure);

/// What the status line says of an image that is shown all the same.
const BilingualText& IncompleteImageText();
const BilingualText& WrongFilenameExtensionText();

} // namespace Quorvex::App
