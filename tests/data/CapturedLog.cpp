#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

/// Many of these tests make the program report; none of it belongs into the log of the person who runs them.
class CapturedLog final : public ::testing::Environment {
public:
    void SetUp() override { m_capture.emplace(); }
    void TearDown() override { m_capture.reset(); }

private:
    std::optional<Quorvex::Test::LogCapture> m_capture;
};

const ::testing::Environment* const capturedLog = ::testing::AddGlobalTestEnvironment(new CapturedLog());

} // namespace
