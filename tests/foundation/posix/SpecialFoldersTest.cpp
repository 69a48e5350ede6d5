#include "foundation/platform/SpecialFolders.h"

#include "foundation/platform/posix/NativeText.h"
#include "foundation/platform/posix/UserFolders.h"
#include "tests/foundation/posix/ScopedVariable.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

using namespace Quorvex;
using Quorvex::Platform::DesktopFromUserFolders;
using Quorvex::Test::ScopedVariable;
using Quorvex::Test::TemporaryFolder;

namespace {

std::string PathOf(SpecialFolder folder) {
    return Platform::NativeFromWide(GetSpecialFolder(folder));
}

/// A user of the test's own: a home folder, and no XDG variable set.
struct User {
    TemporaryFolder folder;
    std::string home = folder.Path().string();
    ScopedVariable homeVariable{"HOME", home.c_str()};
    ScopedVariable config{"XDG_CONFIG_HOME", nullptr};
    ScopedVariable state{"XDG_STATE_HOME", nullptr};
};

TEST(SpecialFoldersTest, DataFoldersLieBelowTheHomeFolder) {
    const User user;
    EXPECT_EQ(PathOf(SpecialFolder::RoamingData), user.home + "/.config");
    EXPECT_EQ(PathOf(SpecialFolder::LocalData), user.home + "/.local/state");
}

TEST(SpecialFoldersTest, XdgVariablesNameTheDataFolders) {
    const User user;
    const ScopedVariable config("XDG_CONFIG_HOME", "/some/config");
    const ScopedVariable state("XDG_STATE_HOME", "/some/state");
    EXPECT_EQ(PathOf(SpecialFolder::RoamingData), "/some/config");
    EXPECT_EQ(PathOf(SpecialFolder::LocalData), "/some/state");
}

TEST(SpecialFoldersTest, EmptyAndRelativeVariablesDoNotCount) {
    const User user;
    for (const char* value : {"", "relative/path"}) {
        const ScopedVariable config("XDG_CONFIG_HOME", value);
        EXPECT_EQ(PathOf(SpecialFolder::RoamingData), user.home + "/.config");
    }
}

TEST(SpecialFoldersTest, UserWithoutHomeVariableHasTheOneOfTheUserTable) {
    const User user;
    const ScopedVariable noHome("HOME", nullptr);
    EXPECT_TRUE(PathOf(SpecialFolder::LocalData).starts_with("/"));
    EXPECT_FALSE(PathOf(SpecialFolder::LocalData).starts_with(user.home));
}

TEST(SpecialFoldersTest, NamesThatAreNoUtf8ComeThrough) {
    const User user;
    const ScopedVariable state("XDG_STATE_HOME", "/\xE9tat");
    EXPECT_EQ(PathOf(SpecialFolder::LocalData), "/\xE9tat");
}

TEST(SpecialFoldersTest, DesktopIsTheHomeFolderIfThereIsNoOther) {
    const User user;
    EXPECT_EQ(PathOf(SpecialFolder::Desktop), user.home);
    std::filesystem::create_directory(user.folder.Path() / "Desktop");
    EXPECT_EQ(PathOf(SpecialFolder::Desktop), user.home + "/Desktop");
}

TEST(SpecialFoldersTest, DesktopIsNamedByTheUsersFolders) {
    const User user;
    std::filesystem::create_directory(user.folder.Path() / "Desktop");
    std::filesystem::create_directory(user.folder.Path() / "Schreibtisch");
    std::filesystem::create_directory(user.folder.Path() / ".config");
    user.folder.Write(".config/user-dirs.dirs",
                      "# written by xdg-user-dirs-update\nXDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n");
    EXPECT_EQ(PathOf(SpecialFolder::Desktop), user.home + "/Schreibtisch");
    // A folder that has gone since is no desktop.
    std::filesystem::remove(user.folder.Path() / "Schreibtisch");
    EXPECT_EQ(PathOf(SpecialFolder::Desktop), user.home + "/Desktop");
}

TEST(SpecialFoldersTest, UsersFoldersAreReadFromTheConfigurationFolder) {
    const User user;
    std::filesystem::create_directory(user.folder.Path() / "conf");
    std::filesystem::create_directory(user.folder.Path() / "D");
    user.folder.Write("conf/user-dirs.dirs", "XDG_DESKTOP_DIR=\"$HOME/D\"\n");
    const std::string conf = user.home + "/conf";
    const ScopedVariable config("XDG_CONFIG_HOME", conf.c_str());
    EXPECT_EQ(PathOf(SpecialFolder::Desktop), user.home + "/D");
}

struct Case {
    const char* text;
    const char* desktop; ///< Null where none is named.
};

TEST(SpecialFoldersTest, UsersFoldersAreParsedAsTheyAreWritten) {
    for (const Case& c :
         {Case{"", nullptr}, Case{"XDG_DESKTOP_DIR=\"$HOME/Desktop\"", "/u/Desktop"},
          Case{"  XDG_DESKTOP_DIR = \"$HOME/Desktop\"  \n", "/u/Desktop"},
          Case{"XDG_DESKTOP_DIR=\"/data/desk\"\n", "/data/desk"}, Case{"XDG_DESKTOP_DIR=\"$HOME\"\n", "/u"},
          Case{"XDG_DESKTOP_DIR=\"$HOME/\"\n", "/u"}, Case{"XDG_DESKTOP_DIR=\"/\"\n", "/"},
          Case{"XDG_DESKTOP_DIR=\"$HOME/My \\\"desk\\\"\"\n", "/u/My \"desk\""},
          Case{"XDG_DESKTOP_DIR=\"/a\"\nXDG_DESKTOP_DIR=\"/b\"\n", "/b"}, Case{"XDG_DOWNLOAD_DIR=\"/a\"\n", nullptr},
          Case{"# XDG_DESKTOP_DIR=\"/a\"\n", nullptr}, Case{"XDG_DESKTOP_DIR=\"relative\"\n", nullptr},
          Case{"XDG_DESKTOP_DIR=\"$HOMEX\"\n", nullptr}, Case{"XDG_DESKTOP_DIR=/a\n", nullptr},
          Case{"XDG_DESKTOP_DIR\n", nullptr}, Case{"XDG_DESKTOP_DIR=\"", nullptr},
          Case{"XDG_DESKTOP_DIR=\"/a\\", "/a\\"}}) {
        const auto desktop = DesktopFromUserFolders(c.text, "/u");
        EXPECT_EQ(desktop.value_or("(none)"), c.desktop != nullptr ? c.desktop : "(none)") << c.text;
    }
}

TEST(ModulePathTest, IsTheRunningProgram) {
    const std::string path = Platform::NativeFromWide(GetModulePath());
    EXPECT_TRUE(path.starts_with("/")) << path;
    EXPECT_TRUE(path.ends_with("/foundation_tests")) << path;
}

} // namespace
