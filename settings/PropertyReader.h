#pragma once

#include "foundation/String.h"

#include <string>

namespace Quorvex {

/// A store of settings as texts under names, to read from.
class PropertyReader {
public:
    virtual ~PropertyReader() = default;
    /// The text stored under the name, empty where there is none.
    virtual String ReadString(const std::string& name) = 0;
};

} // namespace Quorvex
