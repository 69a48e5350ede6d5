#pragma once

#include "foundation/Exception.h"

#include <string>

namespace Quorvex::Test {

/// The text of the Quorvex::Exception that the action raises; a text that no exception has where it raises none.
template <class Action>
std::string RaisedText(const Action& action) {
    try {
        action();
    } catch (const Exception& failure) {
        return failure.what();
    }
    return "(nothing was raised)";
}

} // namespace Quorvex::Test
