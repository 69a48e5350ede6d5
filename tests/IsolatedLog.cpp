#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

#include <optional>

namespace Quorvex::Test {

namespace {

/// Part of every test program: what tests report on purpose reaches neither the log nor the desktop of whoever runs
/// them.
class IsolatedLog : public testing::Environment {
public:
    void SetUp() override { m_capture.emplace(); }
    void TearDown() override { m_capture.reset(); }

private:
    std::optional<LogCapture> m_capture;
};

[[maybe_unused]] testing::Environment* const registered = testing::AddGlobalTestEnvironment(new IsolatedLog);

} // namespace

} // namespace Quorvex::Test
