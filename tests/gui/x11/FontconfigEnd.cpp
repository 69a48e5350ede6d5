#include <fontconfig/fontconfig.h>

#include <gtest/gtest.h>

namespace Quorvex::GUI {
namespace {

/// Fontconfig keeps what it read of the system's fonts until it is told that nobody asks any more, by pointers that a
/// leak checker does not recognise.
class FontconfigEnd : public testing::Environment {
public:
    void TearDown() override { FcFini(); }
};

[[maybe_unused]] testing::Environment* const registered = testing::AddGlobalTestEnvironment(new FontconfigEnd);

} // namespace
} // namespace Quorvex::GUI
