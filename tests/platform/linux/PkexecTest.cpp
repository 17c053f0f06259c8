#include "platform/linux/Pkexec.h"

#include "platform/linux/SpawnedProcess.h"
#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace calorivo {
namespace {

namespace fs = std::filesystem;

/// A script in the place of pkexec, which writes down that it was called.
class PkexecTest : public testing::Test {
  protected:
    std::string tool(const std::string& script) const {
        std::string path =
            folder.write("pkexec", "#!/bin/sh\necho \"$#\" >>\"${0%/*}/calls\"\n" + script + "\n");
        fs::permissions(path, fs::perms{0755});
        return path;
    }
    PrivilegedResult run(const std::string& script, const std::string& command,
                         const std::vector<std::string>& arguments) const {
        Pkexec pkexec({tool(script)});
        const ExecuteWithPrivileges execute = pkexec.findExecuteWithPrivileges();
        if (!execute) return {errAuthorizationToolExecuteFailure, false, -1};
        return execute(command, arguments);
    }
    const TemporaryFolder folder;
};

TEST_F(PkexecTest, TellsHowTheCommandEnded) {
    struct Row {
        std::string script;
        OSStatus status;
        bool isWaited;
        std::optional<std::int32_t> exitCode;
    };
    const Row rows[] = {{"exit 0", errAuthorizationSuccess, true, 0},
                        {"exit 1", errAuthorizationSuccess, true, 1},
                        {"exit 125", errAuthorizationSuccess, true, 125},
                        {"exit 126", errAuthorizationCanceled, false, std::nullopt},
                        {"exit 127", errAuthorizationDenied, false, std::nullopt},
                        {"kill -9 $$", errAuthorizationSuccess, true, std::nullopt}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.script);
        const PrivilegedResult result = run(row.script, "/bin/true", {});
        EXPECT_EQ(result.status, row.status);
        EXPECT_EQ(result.isWaited, row.isWaited);
        EXPECT_EQ(result.exitCode, row.exitCode);
    }
}

TEST_F(PkexecTest, RunsACommandWithItsArgumentsAsTheyAre) {
    const std::string hostile = folder.path("a'; touch pwned; '$(touch pwned)\n-rf");
    folder.write("file", "text");
    const PrivilegedResult result = run("exec \"$@\"", "/bin/cp", {"-pR", folder.path("file"), hostile});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(fs::is_regular_file(hostile));
    EXPECT_FALSE(fs::exists(folder.path("pwned")));
    EXPECT_FALSE(fs::exists("pwned"));
    EXPECT_EQ(folder.read("calls"), "4\n");
}

TEST_F(PkexecTest, AsksForNoPasswordToRemoveNothing) {
    const PrivilegedResult nothing = run("exit 126", "/bin/rm", {"-rf", folder.path("missing")});
    EXPECT_EQ(nothing.status, errAuthorizationSuccess);
    EXPECT_EQ(nothing.exitCode, 0);
    EXPECT_FALSE(fs::exists(folder.path("calls")));
    fs::create_symlink("/nowhere", folder.path("dangling"));
    EXPECT_EQ(run("exec \"$@\"", "/bin/rm", {"-rf", folder.path("dangling")}).exitCode, 0);
    EXPECT_FALSE(fs::is_symlink(folder.path("dangling")));
}

TEST_F(PkexecTest, IsNotThereWithoutTheTool) {
    Pkexec missing({folder.path("missing"), folder.write("notExecutable", "")});
    EXPECT_FALSE(missing.findExecuteWithPrivileges());
    Pkexec second({folder.path("missing"), tool("exit 7")});
    EXPECT_EQ(second.findExecuteWithPrivileges()("/bin/true", {}).exitCode, 7);
}

TEST_F(PkexecTest, FailsWhenTheToolCannotBeStarted) {
    const std::string path = folder.write("broken", "#!/no/such/shell\n");
    fs::permissions(path, fs::perms{0755});
    EXPECT_EQ(Pkexec({path}).findExecuteWithPrivileges()("/bin/true", {}).status,
              errAuthorizationToolExecuteFailure);
}

TEST_F(PkexecTest, GivesOnlyAnAdministratorsRightsAndOnlyWhenItMayAsk) {
    Pkexec pkexec({tool("exit 0")});
    EXPECT_EQ(pkexec.AuthorizationCreate(), errAuthorizationSuccess);
    EXPECT_EQ(pkexec.AuthorizationCopyRights(rightSystemPrivilegeAdmin, 19), errAuthorizationSuccess);
    EXPECT_EQ(pkexec.AuthorizationCopyRights(rightSystemPrivilegeAdmin, 18), errAuthorizationDenied);
    EXPECT_EQ(pkexec.AuthorizationCopyRights("system.other", 19), errAuthorizationDenied);
    pkexec.AuthorizationFree();
}

TEST(SpawnedProcess, GivesAProgramASessionAndAnEnvironmentOfItsOwn) {
    const TemporaryFolder folder;
    ::setenv("APPIMAGE", "/old.AppImage", 1);
    ::setenv("CALORIVO_TEST_VARIABLE", "kept", 1);
    const std::string script =
        "printf '%s\\n' \"$(pwd)\" \"${APPIMAGE-none}\" \"$CALORIVO_TEST_VARIABLE\" "
        "\"$(readlink /proc/$$/fd/0)\" \"$1\" >\"$2\"";
    for (const Session session : {Session::own, Session::shared}) {
        const auto child = spawn("/bin/sh", {"-c", script, "sh", "a b'c", folder.path("out")}, session);
        ASSERT_TRUE(child);
        const auto end = waitForChild(*child);
        ASSERT_TRUE(end);
        EXPECT_EQ(end->exitCode, 0);
        if (session == Session::own)
            EXPECT_EQ(folder.read("out"), "/\nnone\nkept\n/dev/null\na b'c\n");
        else
            EXPECT_NE(folder.read("out").find("/old.AppImage\nkept\n"), std::string::npos);
    }
    ::unsetenv("APPIMAGE");
    ::unsetenv("CALORIVO_TEST_VARIABLE");
    EXPECT_EQ(spawn(folder.path("missing"), {}, Session::own), std::nullopt);
    EXPECT_FALSE(waitForChild(::getpid()));
}

}  // namespace
}  // namespace calorivo
