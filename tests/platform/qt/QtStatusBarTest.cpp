#include "platform/qt/QtStatusBar.h"

#include "FakeStatusNotifierWatcher.h"
#include "SignalRecorder.h"
#include "platform/qt/DBusMenuTypes.h"
#include "platform/qt/StatusNotifierItem.h"
#include "platform/qt/TrayIconDigits.h"
#include "support/QtPrivateBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QColor>
#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusVariant>
#include <QIcon>
#include <QMenu>
#include <QPixmap>
#include <QSignalSpy>
#include <QVariantMap>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace calorivo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const QString itemName = QStringLiteral("org.kde.StatusNotifierItem");
const QString propertiesName = QStringLiteral("org.freedesktop.DBus.Properties");
const QString gnomeName = QStringLiteral("org.gnome.Shell");
const QString mateName = QStringLiteral("org.mate.panel.applet.NotificationAreaAppletFactory");
const QString ayatanaName = QStringLiteral("org.ayatana.indicator.application");
const Image image{"NewIcon_16px", true};

AttributedString smaller(const std::string& title) {
    return {title, {{{0, title.size()}, {.font = MenuBarFont{12.0}}}}};
}

/// What a panel sees of an item.
struct Shown {
    QString iconName;
    std::optional<QString> label;
    IconPixmaps pixmaps;
    QString title;
};

class QtStatusBarTest : public testing::Test {
  protected:
    StatusBarResources resources() {
        const auto icon = [](const std::string& name, bool) {
            QPixmap pixmap(48, 48);
            pixmap.fill(name == "NewIcon_16px" ? Qt::black : Qt::red);
            return QIcon(pixmap);
        };
        return {.menu = [this](std::string_view name) { return name == "statusMenu" ? &menu_ : nullptr; },
                .icon = icon,
                .iconThemePath = QStringLiteral("/icons"),
                .iconName = QStringLiteral("calorivo-symbolic"),
                .blankIconName = QStringLiteral("calorivo-blank")};
    }
    /// An item as the program makes it, seen by a panel that has this name, too.
    StatusBarItem& itemOn(const QString& panelName) {
        item_.reset();
        watcher_.reset();
        if (!panelName.isEmpty()) panel_.registerService(panelName);
        watcher_ = std::make_unique<FakeStatusNotifierWatcher>(panel_);
        item_ = bar_.statusItemWithLength(StatusBar::variableLength);
        item_->setMenu("statusMenu");
        item_->setHighlightMode(true);
        settle(panel_);
        return *item_;
    }
    QString service() const { return watcher_->registrations().last(); }
    QVariantMap properties() {
        settle(panel_);
        const QDBusMessage answer = ask(panel_, service(), StatusNotifierItem::objectPath(), propertiesName,
                                        QStringLiteral("GetAll"), {itemName});
        return qdbus_cast<QVariantMap>(answer.arguments().value(0));
    }
    Shown shown() {
        const QVariantMap all = properties();
        const QString label = QStringLiteral("XAyatanaLabel");
        return {all.value(QStringLiteral("IconName")).toString(),
                all.contains(label) ? std::optional(all.value(label).toString()) : std::nullopt,
                qdbus_cast<IconPixmaps>(all.value(QStringLiteral("IconPixmap"))),
                all.value(QStringLiteral("Title")).toString()};
    }
    static IconPixmaps digits(const char* number, double scale = 1.0) {
        IconPixmaps pixmaps;
        for (const int side : {16, 22, 24, 32, 48})
            pixmaps.append(toIconPixmap(drawDigits(QString::fromLatin1(number), side, scale)));
        return pixmaps;
    }
    bool isOnBus(const QString& name) { return panel_.interface()->isServiceRegistered(name).value(); }

    PrivateBus bus_;
    QDBusConnection connection_ = bus_.connect(QStringLiteral("program"));
    QDBusConnection panel_ = bus_.connect(QStringLiteral("panel"));
    QMenu menu_;
    QtStatusBar bar_{connection_, resources(), [this](const QString& name) { return bus_.connect(name); }};
    std::unique_ptr<FakeStatusNotifierWatcher> watcher_;
    std::unique_ptr<StatusBarItem> item_;
};

TEST_F(QtStatusBarTest, RegistersAnItemByTheUniqueNameOfItsOwnConnection) {
    itemOn({});
    ASSERT_EQ(watcher_->registrations().size(), 1);
    EXPECT_TRUE(service().startsWith(QLatin1Char(':')));
    EXPECT_NE(service(), connection_.baseService());
    EXPECT_EQ(properties().value(QStringLiteral("IconThemePath")), QVariant(QStringLiteral("/icons")));
    EXPECT_TRUE(bar_.hasHost());
}

TEST_F(QtStatusBarTest, ShowsTheTitleBesideTheIconWhereThePanelCan) {
    for (const QString& panel : {gnomeName, ayatanaName}) {
        panel_.unregisterService(gnomeName);
        StatusBarItem& item = itemOn(panel);
        item.setImage(image);
        item.setTitle("45°C / 900 RPM");
        EXPECT_EQ(shown().iconName, QStringLiteral("calorivo-symbolic"));
        EXPECT_EQ(shown().label, QStringLiteral("45°C / 900 RPM"));
        EXPECT_EQ(properties().value(QStringLiteral("XAyatanaLabelGuide")),
                  QVariant(QStringLiteral("88°C / 8888 RPM")));
        item.setImage(std::nullopt);
        EXPECT_EQ(shown().iconName, QStringLiteral("calorivo-blank"));
        EXPECT_EQ(shown().label, QStringLiteral("45°C / 900 RPM"));
    }
}

TEST_F(QtStatusBarTest, HasALabelOnlyWithATitleWhereALabelHidesTheIcon) {
    StatusBarItem& item = itemOn(mateName);
    item.setImage(image);
    EXPECT_EQ(shown().label, std::nullopt);
    EXPECT_EQ(shown().iconName, QStringLiteral("calorivo-symbolic"));
    item.setTitle("45°C");
    EXPECT_EQ(shown().label, QStringLiteral("45°C"));
    item.setTitle("");
    EXPECT_EQ(shown().label, std::nullopt);
}

TEST_F(QtStatusBarTest, MeetsAPanelAgainThatWouldNotPutTheIconBack) {
    StatusBarItem& item = itemOn(mateName);
    item.setTitle("45°C");
    const QString name = service();
    EXPECT_EQ(shown().label, QStringLiteral("45°C"));
    item.setTitle("");
    EXPECT_EQ(shown().label, std::nullopt);
    EXPECT_NE(service(), name);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isOnBus(name); }));
    item.setTitle("46°C");
    EXPECT_EQ(shown().label, QStringLiteral("46°C"));
    EXPECT_EQ(watcher_->registrations().size(), 2);
}

TEST_F(QtStatusBarTest, DrawsTheFirstTemperatureIntoTheIconElsewhere) {
    StatusBarItem& item = itemOn({});
    item.setImage(image);
    item.setTitle("45°C / 52°C / 1200 RPM");
    EXPECT_EQ(shown().iconName, QString()) << "a name would win over the pixels";
    EXPECT_EQ(shown().label, std::nullopt);
    EXPECT_EQ(shown().pixmaps, digits("45"));
    EXPECT_EQ(shown().title, QStringLiteral("45°C / 52°C / 1200 RPM"));
    const auto toolTip = qdbus_cast<StatusToolTip>(properties().value(QStringLiteral("ToolTip")));
    EXPECT_EQ(toolTip.title, QStringLiteral("45°C / 52°C / 1200 RPM"));
    item.setImage(std::nullopt);
    EXPECT_EQ(shown().pixmaps, digits("45"));
}

TEST_F(QtStatusBarTest, DrawsSmallerDigitsForASmallerFont) {
    StatusBarItem& item = itemOn({});
    item.setAttributedTitle(smaller("45°C"));
    EXPECT_EQ(shown().pixmaps, digits("45", 12.0 / 14.0));
    EXPECT_EQ(shown().title, QStringLiteral("45°C"));
    item.setTitle("45°C");
    EXPECT_EQ(shown().pixmaps, digits("45"));
    item.setAttributedTitle({"45°C", {}});
    EXPECT_EQ(shown().pixmaps, digits("45")) << "no font of its own";
}

TEST_F(QtStatusBarTest, KeepsAnIconWhenThereIsNothingElse) {
    for (const QString& panel : {QString(), gnomeName, mateName}) {
        StatusBarItem& item = itemOn(panel);
        item.setImage(std::nullopt);
        item.setTitle("");
        const Shown empty = shown();
        EXPECT_EQ(empty.iconName, QStringLiteral("calorivo-symbolic"));
        ASSERT_EQ(empty.pixmaps.size(), 5);
        EXPECT_TRUE(empty.pixmaps.last().bytes.contains('\xff')) << "not a transparent one";
        EXPECT_EQ(empty.label, std::nullopt);
        EXPECT_EQ(empty.title, QStringLiteral("Calorivo"));
    }
}

TEST_F(QtStatusBarTest, GivesTheIconInTheSizesThatPanelsAskFor) {
    StatusBarItem& item = itemOn({});
    item.setImage(Image{"colourful", false});
    QList<int> sides;
    const IconPixmaps pixmaps = shown().pixmaps;
    for (const IconPixmap& pixmap : pixmaps) sides.append(pixmap.width);
    EXPECT_EQ(sides, (QList<int>{16, 22, 24, 32, 48}));
    EXPECT_EQ(pixmaps.first().bytes.left(4), QByteArray("\xff\xff\x00\x00", 4)) << "red, as it is";
    item.setImage(image);
    EXPECT_EQ(shown().pixmaps.first().bytes.mid(4 * (16 * 8 + 8), 4), QByteArray("\xff\xff\xff\xff", 4))
        << "a template in the colour that is seen everywhere";
}

TEST_F(QtStatusBarTest, FollowsTheWantedPlaceAtOnce) {
    StatusBarItem& item = itemOn(gnomeName);
    item.setTitle("45°C");
    EXPECT_EQ(shown().label, QStringLiteral("45°C"));
    bar_.setTitlePlace(TitlePlace::insideIcon);
    EXPECT_EQ(shown().label, std::nullopt);
    EXPECT_EQ(shown().pixmaps, digits("45"));
    bar_.setTitlePlace(TitlePlace::besideIcon);
    EXPECT_EQ(shown().label, QStringLiteral("45°C"));
    EXPECT_EQ(bar_.titlePlace(), TitlePlace::besideIcon);
}

TEST_F(QtStatusBarTest, TellsAStormOfTitlesOnce) {
    StatusBarItem& item = itemOn(gnomeName);
    item.setTitle("45°C");
    settle(panel_);
    SignalRecorder recorder(panel_, service(), StatusNotifierItem::objectPath(), itemName);
    for (int i = 0; i < 1000; ++i) item.setTitle(std::to_string(i) + "°C");
    settle(panel_);
    EXPECT_THAT(recorder.takeNames(), ElementsAre("NewTitle", "NewToolTip", "XAyatanaNewLabel"));
    EXPECT_EQ(shown().label, QStringLiteral("999°C"));
    item.setTitle("1°C");
    item.setTitle("999°C");
    settle(panel_);
    EXPECT_THAT(recorder.takeNames(), IsEmpty());
}

TEST_F(QtStatusBarTest, ComesBackWithItsTextWheneverTheWatcherDoes) {
    StatusBarItem& item = itemOn({});
    const QString name = service();
    for (int i = 1; i <= 20; ++i) {
        watcher_.reset();
        settle(panel_);
        EXPECT_FALSE(bar_.hasHost());
        const std::string title = std::to_string(i) + "°C";
        item.setTitle(title);
        watcher_ = std::make_unique<FakeStatusNotifierWatcher>(panel_);
        settle(panel_);
        EXPECT_EQ(watcher_->registrations(), QStringList{name});
        EXPECT_EQ(shown().title.toStdString(), title);
        EXPECT_TRUE(bar_.hasHost());
    }
}

TEST_F(QtStatusBarTest, TriesAgainWithAPanelWhenAWatcherRefusedIt) {
    watcher_ = std::make_unique<FakeStatusNotifierWatcher>(panel_, false);
    watcher_->setMood(FakeStatusNotifierWatcher::Mood::refusing);
    item_ = bar_.statusItemWithLength(StatusBar::variableLength);
    settle(panel_);
    EXPECT_EQ(watcher_->registrations().size(), 1);
    watcher_->setMood(FakeStatusNotifierWatcher::Mood::accepting);
    watcher_->setHasHost(true);
    settle(panel_);
    EXPECT_EQ(watcher_->registrations().size(), 2);
    watcher_->setHasHost(false);
    watcher_->setHasHost(true);
    settle(panel_);
    EXPECT_EQ(watcher_->registrations().size(), 2) << "accepted is enough";
}

TEST_F(QtStatusBarTest, TakesItsConnectionAwayWithTheItem) {
    itemOn({});
    const QString name = service();
    EXPECT_TRUE(isOnBus(name));
    item_.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isOnBus(name); }));
    itemOn({});
    EXPECT_NE(service(), name);
}

TEST_F(QtStatusBarTest, HasAsManyItemsAsAreMade) {
    itemOn({});
    const auto other = bar_.statusItemWithLength(StatusBar::variableLength);
    settle(panel_);
    ASSERT_EQ(watcher_->registrations().size(), 2);
    EXPECT_NE(watcher_->registrations().at(0), watcher_->registrations().at(1));
}

TEST_F(QtStatusBarTest, TellsWhenAnItemIsActivatedAndWhenPanelsComeAndGo) {
    const QSignalSpy activated(&bar_, &QtStatusBar::activated);
    const QSignalSpy hosts(&bar_, &QtStatusBar::hostChanged);
    itemOn({});
    ask(panel_, service(), StatusNotifierItem::objectPath(), itemName,
        QStringLiteral("ProvideXdgActivationToken"), {QStringLiteral("token")});
    ask(panel_, service(), StatusNotifierItem::objectPath(), itemName, QStringLiteral("Activate"), {1, 1});
    settle(panel_);
    ASSERT_EQ(activated.size(), 1);
    EXPECT_EQ(activated.at(0).at(0).toString(), QStringLiteral("token"));
    watcher_.reset();
    settle(panel_);
    ASSERT_EQ(hosts.size(), 2);
    EXPECT_TRUE(hosts.at(0).at(0).toBool());
    EXPECT_FALSE(hosts.at(1).at(0).toBool());
}

TEST_F(QtStatusBarTest, ExportsTheMenuOfTheName) {
    const QAction* const open = menu_.addAction(QStringLiteral("Open"));
    const QSignalSpy triggered(open, &QAction::triggered);
    StatusBarItem& item = itemOn({});
    const QString path = properties().value(QStringLiteral("Menu")).value<QDBusObjectPath>().path();
    const auto click = [&] {
        return ask(panel_, service(), path, QStringLiteral("com.canonical.dbusmenu"), QStringLiteral("Event"),
                   {1, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(0)), 0U})
            .errorName();
    };
    EXPECT_EQ(click(), QString());
    settle(panel_);
    EXPECT_EQ(triggered.size(), 1);
    item.setMenu("no such menu");
    EXPECT_EQ(click(), QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"));
}

TEST_F(QtStatusBarTest, OutlivesItsBus) {
    StatusBarItem& item = itemOn({});
    item.setTitle("45°C");
    bus_.stop();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !connection_.isConnected(); }));
    item.setTitle("46°C");
    item.setImage(image);
    QCoreApplication::processEvents();
}

TEST(QtStatusBar, IsSilentWithoutABus) {
    const auto nowhere = [](const QString& name) { return QDBusConnection(name); };
    QtStatusBar bar(QDBusConnection(QStringLiteral("no such connection")), {}, nowhere);
    const auto item = bar.statusItemWithLength(StatusBar::variableLength);
    item->setMenu("statusMenu");
    item->setImage(image);
    item->setTitle("45°C");
    QCoreApplication::processEvents();
    EXPECT_FALSE(bar.hasHost());
}

}  // namespace
}  // namespace calorivo
