#pragma once

#include "foundation/String.h"

#include <string>

namespace Quorvex {

/// A store of settings as texts under names, to write into.
class PropertyWriter {
public:
    virtual ~PropertyWriter() = default;
    virtual void Write(const std::string& name, const String& text) = 0;
};

} // namespace Quorvex
