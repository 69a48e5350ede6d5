#pragma once

#include "settings/CompositeOfProperties.h"

namespace Quorvex {

/// All values below a composite in their order, each as "path = value", where the path joins the names below the
/// composite with "/". A field that has no value is left out.
std::vector<std::string> ListProperties(const CompositeOfProperties& root);

} // namespace Quorvex
