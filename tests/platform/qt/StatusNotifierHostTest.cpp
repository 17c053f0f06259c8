#include "platform/qt/StatusNotifierHost.h"

#include "FakeStatusNotifierWatcher.h"
#include "support/QtPrivateBus.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <memory>

namespace calorivo {
namespace {

const QString gnomeName = QStringLiteral("org.gnome.Shell");
const QString mateName = QStringLiteral("org.mate.panel.applet.NotificationAreaAppletFactory");
const QString ayatanaName = QStringLiteral("org.ayatana.indicator.application");

TEST(StatusNotifierHost, KnowsThePanelByTheProcessOfItsWatcher) {
    const QString watcher = StatusNotifierHost::watcherName();
    const HostTraits poorest{LabelSupport::none, true};
    EXPECT_EQ(hostTraitsOf({}), poorest);
    EXPECT_EQ(hostTraitsOf({{watcher, 7}}), poorest);
    EXPECT_EQ(hostTraitsOf({{gnomeName, 7}}), poorest);
    EXPECT_EQ(hostTraitsOf({{watcher, 7}, {gnomeName, 7}}), (HostTraits{LabelSupport::besideIcon, true}));
    EXPECT_EQ(hostTraitsOf({{watcher, 7}, {ayatanaName, 7}}), (HostTraits{LabelSupport::besideIcon, false}));
    EXPECT_EQ(hostTraitsOf({{watcher, 7}, {mateName, 7}}), (HostTraits{LabelSupport::insteadOfIcon, true}));
    EXPECT_EQ(hostTraitsOf({{watcher, 7}, {gnomeName, 8}}), poorest) << "another program's watcher";
    EXPECT_EQ(hostTraitsOf({{watcher, 7}, {gnomeName, 8}, {ayatanaName, 7}}),
              (HostTraits{LabelSupport::besideIcon, false}));
    EXPECT_EQ(hostTraitsOf({{watcher, 0}, {gnomeName, 0}}), poorest)
        << "processes that the bus does not know";
}

class StatusNotifierHostTest : public testing::Test {
  protected:
    PrivateBus bus_;
    QDBusConnection connection_ = bus_.connect(QStringLiteral("program"));
    QDBusConnection panel_ = bus_.connect(QStringLiteral("panel"));
};

TEST_F(StatusNotifierHostTest, HasNoHostOnAnEmptyBus) {
    const StatusNotifierHost host(connection_);
    settle(connection_);
    EXPECT_FALSE(host.hasWatcher());
    EXPECT_FALSE(host.hasHost());
}

TEST_F(StatusNotifierHostTest, FindsThePanelThatIsThereAlready) {
    const FakeStatusNotifierWatcher watcher(panel_);
    StatusNotifierHost host(connection_);
    const QSignalSpy appeared(&host, &StatusNotifierHost::watcherAppeared);
    const QSignalSpy changed(&host, &StatusNotifierHost::hostChanged);
    settle(connection_);
    EXPECT_TRUE(host.hasWatcher());
    EXPECT_TRUE(host.hasHost());
    EXPECT_EQ(appeared.size(), 1);
    EXPECT_EQ(changed.size(), 1);
}

TEST_F(StatusNotifierHostTest, FollowsAPanelThatComesAndGoes) {
    StatusNotifierHost host(connection_);
    const QSignalSpy changed(&host, &StatusNotifierHost::hostChanged);
    auto watcher = std::make_unique<FakeStatusNotifierWatcher>(panel_, false);
    settle(connection_);
    EXPECT_TRUE(host.hasWatcher());
    EXPECT_FALSE(host.hasHost()) << "a watcher alone shows nothing";
    watcher->setHasHost(true);
    settle(connection_);
    EXPECT_TRUE(host.hasHost());
    watcher->setHasHost(false);
    settle(connection_);
    EXPECT_FALSE(host.hasHost());
    watcher->setHasHost(true);
    settle(connection_);
    watcher.reset();
    settle(connection_);
    EXPECT_FALSE(host.hasWatcher());
    EXPECT_FALSE(host.hasHost());
    ASSERT_EQ(changed.size(), 4);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(changed.at(i).at(0).toBool(), i % 2 == 0);
}

TEST_F(StatusNotifierHostTest, TakesAWatcherThatDoesNotTellForAPanel) {
    panel_.registerService(StatusNotifierHost::watcherName());
    const StatusNotifierHost host(connection_);
    settle(connection_);
    EXPECT_TRUE(host.hasHost());
}

TEST_F(StatusNotifierHostTest, KnowsTheTraitsBeforeItTellsOfTheWatcher) {
    panel_.registerService(mateName);
    const FakeStatusNotifierWatcher watcher(panel_);
    StatusNotifierHost host(connection_);
    HostTraits atAppearance;
    QObject::connect(&host, &StatusNotifierHost::watcherAppeared, &host,
                     [&] { atAppearance = host.traits(); });
    settle(connection_);
    EXPECT_EQ(atAppearance, (HostTraits{LabelSupport::insteadOfIcon, true}));
}

TEST_F(StatusNotifierHostTest, TellsWhenThePanelTurnsOutToBeAKnownOne) {
    const FakeStatusNotifierWatcher watcher(panel_);
    StatusNotifierHost host(connection_);
    const QSignalSpy changed(&host, &StatusNotifierHost::traitsChanged);
    settle(connection_);
    EXPECT_EQ(changed.size(), 0);
    panel_.registerService(gnomeName);
    settle(connection_);
    EXPECT_EQ(host.traits(), (HostTraits{LabelSupport::besideIcon, true}));
    panel_.unregisterService(gnomeName);
    settle(connection_);
    EXPECT_EQ(host.traits(), HostTraits());
    EXPECT_EQ(changed.size(), 2);
}

TEST(StatusNotifierHost, IsSilentWithoutABus) {
    const StatusNotifierHost host(QDBusConnection(QStringLiteral("no such connection")));
    EXPECT_FALSE(host.hasWatcher());
    EXPECT_FALSE(host.hasHost());
}

}  // namespace
}  // namespace calorivo
