#include "platform/qt/Instance.h"

#include "platform/linux/TemporaryFolder.h"
#include "platform/qt/InstanceSocket.h"
#include "support/QtPrivateBus.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDBusMessage>
#include <QStringList>
#include <QTest>
#include <QVariantMap>

#include <array>
#include <chrono>
#include <filesystem>
#include <future>
#include <map>
#include <memory>
#include <string>

namespace calorivo {
namespace {

using Role = Instance::Role;

const QString name = QStringLiteral("org.example.Test-Program");
constexpr int shortPatience = 50;
constexpr int longPatience = 20000;

QDBusConnection noBus() { return QDBusConnection(QStringLiteral("there is no such bus")); }

std::function<QByteArray(const char*)> environment(std::map<std::string, QByteArray> variables) {
    return [variables = std::move(variables)](const char* variable) {
        const auto found = variables.find(variable);
        return found == variables.end() ? QByteArray() : found->second;
    };
}

/// Writes down the tokens by which the instance is activated.
void record(Instance& instance, QStringList& tokens) {
    QObject::connect(&instance, &Instance::activateRequested, &instance,
                     [&tokens](const QString& token) { tokens.append(token); });
}

/// What a second instance becomes, in a thread of its own, while the first one's loop runs in this one.
Role roleOfSecond(const InstancePlaces& places, const std::map<std::string, QByteArray>& variables) {
    auto role = std::async(std::launch::async,
                           [&places, &variables] { return Instance(places).start(environment(variables)); });
    EXPECT_TRUE(QTest::qWaitFor(
        [&role] { return role.wait_for(std::chrono::seconds(0)) == std::future_status::ready; },
        longPatience));
    return role.get();
}

TEST(Instance, OnABusTheSecondOneActivatesTheFirst) {
    PrivateBus bus;
    Instance first({name, bus.connect(QStringLiteral("first")), {}});
    ASSERT_EQ(first.start(environment({})), Role::first);
    QStringList tokens;
    record(first, tokens);
    const InstancePlaces second{name, bus.connect(QStringLiteral("second")), {}, longPatience};
    EXPECT_EQ(roleOfSecond(second, {{"XDG_ACTIVATION_TOKEN", "token"}, {"DESKTOP_STARTUP_ID", "id"}}),
              Role::second);
    EXPECT_EQ(roleOfSecond(second, {{"DESKTOP_STARTUP_ID", "id"}}), Role::second);
    EXPECT_EQ(roleOfSecond(second, {}), Role::second);
    EXPECT_EQ(tokens, (QStringList{QStringLiteral("token"), QStringLiteral("id"), QString()}));
}

TEST(Instance, ADesktopActivatesTheProgramByItsInterface) {
    PrivateBus bus;
    Instance first({name, bus.connect(QStringLiteral("first")), {}});
    ASSERT_EQ(first.start(environment({})), Role::first);
    QStringList tokens;
    record(first, tokens);
    QDBusConnection desktop = bus.connect(QStringLiteral("desktop"));
    const auto call = [&](const char* method, const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall(
            name, QStringLiteral("/org/example/Test_Program"), QStringLiteral("org.freedesktop.Application"),
            QLatin1String(method));
        message.setArguments(arguments);
        const QDBusPendingCall answer = desktop.asyncCall(message);
        EXPECT_TRUE(QTest::qWaitFor([&answer] { return answer.isFinished(); }));
        EXPECT_FALSE(answer.isError()) << answer.error().message().toStdString();
    };
    const QVariantMap data{{QStringLiteral("activation-token"), QStringLiteral("t")}};
    call("Activate", {data});
    call("Open", {QStringList{QStringLiteral("file:///a")}, data});
    call("ActivateAction", {QStringLiteral("action"), QVariantList{}, QVariantMap{}});
    EXPECT_EQ(tokens, (QStringList{QStringLiteral("t"), QStringLiteral("t"), QString()}));
}

TEST(Instance, OnABusASilentFirstOneIsGivenUp) {
    PrivateBus bus;
    Instance first({name, bus.connect(QStringLiteral("first")), {}});
    ASSERT_EQ(first.start(environment({})), Role::first);
    // In the same thread: while the second one waits, the first one cannot answer.
    Instance second({name, bus.connect(QStringLiteral("second")), {}, shortPatience});
    EXPECT_EQ(second.start(environment({})), Role::unanswered);
    EXPECT_EQ(second.problem(),
              "Calorivo is running already, but does not answer. End it, then start it again.");
    EXPECT_EQ(first.problem(), "");
}

TEST(Instance, OnABusTheNameIsFreeWhenTheFirstOneIsGone) {
    PrivateBus bus;
    auto first = std::make_unique<Instance>(InstancePlaces{name, bus.connect(QStringLiteral("first")), {}});
    ASSERT_EQ(first->start(environment({})), Role::first);
    first.reset();
    Instance second({name, bus.connect(QStringLiteral("second")), {}, shortPatience});
    EXPECT_EQ(second.start(environment({})), Role::first);
}

TEST(Instance, WithoutABusTheSecondOneActivatesTheFirst) {
    const TemporaryFolder folder;
    const QString runtime = QString::fromStdString(folder.path());
    Instance first({name, noBus(), runtime});
    ASSERT_EQ(first.start(environment({})), Role::first);
    QStringList tokens;
    record(first, tokens);
    const InstancePlaces second{name, noBus(), runtime, longPatience};
    EXPECT_EQ(roleOfSecond(second, {{"XDG_ACTIVATION_TOKEN", "token"}, {"DESKTOP_STARTUP_ID", "id"}}),
              Role::second);
    EXPECT_EQ(roleOfSecond(second, {{"DESKTOP_STARTUP_ID", "id"}}), Role::second);
    EXPECT_EQ(roleOfSecond(second, {}), Role::second);
    EXPECT_EQ(tokens, (QStringList{QStringLiteral("token"), QStringLiteral("id"), QString()}));
}

TEST(Instance, WithoutABusASilentFirstOneIsGivenUp) {
    const TemporaryFolder folder;
    const QString runtime = QString::fromStdString(folder.path());
    Instance first({name, noBus(), runtime});
    ASSERT_EQ(first.start(environment({})), Role::first);
    QStringList tokens;
    record(first, tokens);
    Instance second({name, noBus(), runtime, shortPatience});
    EXPECT_EQ(second.start(environment({{"XDG_ACTIVATION_TOKEN", "token"}})), Role::unanswered);
    EXPECT_NE(second.problem(), "");
    // When the first one comes to itself it shows itself, although nobody waits any more.
    EXPECT_TRUE(QTest::qWaitFor([&tokens] { return !tokens.isEmpty(); }));
    EXPECT_EQ(tokens, QStringList{QStringLiteral("token")});
}

TEST(Instance, WithoutABusAndAFolderEveryOneIsTheFirst) {
    Instance first({name, noBus(), {}});
    Instance second({name, noBus(), {}});
    EXPECT_EQ(first.start(environment({})), Role::first);
    EXPECT_EQ(second.start(environment({})), Role::first);
    Instance nowhere({name, noBus(), QStringLiteral("/nowhere")});
    EXPECT_EQ(nowhere.start(environment({})), Role::first);
}

TEST(Instance, AProcessThatWasKilledLeavesThePlaceFree) {
    const TemporaryFolder folder;
    std::array<int, 2> ready{};
    ASSERT_EQ(pipe(ready.data()), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const InstanceSocket first(folder.path(), "name");
        [[maybe_unused]] const ssize_t written = write(ready[1], "", 1);
        for (;;) pause();
    }
    char byte = 0;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    close(ready[0]);
    close(ready[1]);
    EXPECT_TRUE(InstanceSocket(folder.path(), "name").isSecond());
    ASSERT_EQ(kill(child, SIGKILL), 0);
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    EXPECT_TRUE(std::filesystem::exists(folder.path("name.socket")));
    const InstanceSocket next(folder.path(), "name");
    EXPECT_FALSE(next.isSecond());
    EXPECT_GE(next.descriptor(), 0);
    const InstanceSocket caller(folder.path(), "name");
    EXPECT_FALSE(caller.call("hello", 0));
    EXPECT_EQ(next.take(), "hello");
    EXPECT_EQ(next.take(), std::nullopt);
}

TEST(Instance, SurvivesAFolderWhosePathIsTooLongForASocket) {
    const TemporaryFolder folder;
    const std::string deep = folder.path(std::string(120, 'x'));
    std::filesystem::create_directory(deep);
    const InstanceSocket first(deep, "name");
    EXPECT_FALSE(first.isSecond());
    EXPECT_EQ(first.descriptor(), -1);
    const InstanceSocket second(deep, "name");
    EXPECT_TRUE(second.isSecond());
    EXPECT_FALSE(second.call("hello", longPatience));
}

}  // namespace
}  // namespace calorivo
