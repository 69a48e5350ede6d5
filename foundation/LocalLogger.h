#pragma once

#include "foundation/Logger.h"

#include <vector>

namespace Quorvex {

/// Keeps the messages of one run until somebody asks for them.
class LocalLogger final : public ILogger {
public:
    void Log(const BilingualText& texts) override;
    void LogText(const String& text) override;
    void LogForBothLanguages(const String& text) override;
    void Write(ILogger& target) override;

    const std::vector<BilingualText>& GetMessages() const { return m_messages; }

private:
    std::vector<BilingualText> m_messages;
};

} // namespace Quorvex
