#pragma once

#include "foundation/BilingualText.h"

namespace Quorvex {

/// Takes the messages of one run of a decoder, which the console panel shows. One thread at a time.
class ILogger {
public:
    virtual ~ILogger() = default;

    /// A pair of texts in both languages.
    virtual void Log(const BilingualText& texts) = 0;
    /// A text in any language, shown as it stands whatever the language.
    virtual void LogText(const String& text) = 0;
    /// One text that serves as both halves of a pair.
    virtual void LogForBothLanguages(const String& text) = 0;
    /// Hands the lines on in their order.
    virtual void Write(ILogger& target) = 0;
};

} // namespace Quorvex
