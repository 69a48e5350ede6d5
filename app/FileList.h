#pragma once

#include "foundation/String.h"

namespace Quorvex::App {

/// Answers one question: which file comes before or after the current one. GUI thread.
class FileList {
public:
    virtual ~FileList() = default;

    /// The full path of the neighbour in the direction, +1 or -1, wrapping at both ends. With preview true neither the
    /// list's cursor nor a selection in the file manager moves. Raises Exception when no usable file remains.
    virtual String Step(int direction, bool preview) = 0;
};

} // namespace Quorvex::App
