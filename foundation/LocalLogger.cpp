#include "foundation/LocalLogger.h"

namespace Quorvex {

void LocalLogger::Log(const BilingualText& texts) {
    m_messages.push_back(texts);
}

void LocalLogger::LogText(const String& text) {
    m_messages.push_back({text, text});
}

void LocalLogger::LogForBothLanguages(const String& text) {
    m_messages.push_back({text, text});
}

void LocalLogger::Write(ILogger& target) {
    // As pairs, whatever they came as: the target need not tell the three kinds apart.
    for (const BilingualText& message : m_messages)
        target.Log(message);
}

} // namespace Quorvex
