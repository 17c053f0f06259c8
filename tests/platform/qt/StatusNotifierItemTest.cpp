#include "platform/qt/StatusNotifierItem.h"

#include "SignalRecorder.h"
#include "support/QtPrivateBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QImage>
#include <QSignalSpy>
#include <QVariantMap>

#include <string>
#include <vector>

namespace calorivo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const QString itemName = QStringLiteral("org.kde.StatusNotifierItem");
const QString propertiesName = QStringLiteral("org.freedesktop.DBus.Properties");

StatusNotifierState someState() {
    return {QStringLiteral("thermometer"),
            {QStringLiteral("one"),
             [] {
                 return IconPixmaps{{1, 1, QByteArray("\xff\x10\x20\x30", 4)}};
             }},
            QStringLiteral("45°C"),
            QStringLiteral("45°C!"),
            QStringLiteral("88°C!")};
}

class StatusNotifierItemTest : public testing::Test {
  protected:
    QDBusMessage call(const QString& interface, const QString& method, const QVariantList& arguments = {}) {
        return ask(panel_, server_.baseService(), StatusNotifierItem::objectPath(), interface, method,
                   arguments);
    }
    QVariantMap allProperties() {
        const QDBusMessage answer = call(propertiesName, QStringLiteral("GetAll"), {itemName});
        return qdbus_cast<QVariantMap>(answer.arguments().value(0));
    }
    std::vector<std::string> signalsAfter(const StatusNotifierState& state) {
        item_.setState(state);
        settle(panel_);
        return recorder_.takeNames();
    }

    PrivateBus bus_;
    QDBusConnection server_ = bus_.connect(QStringLiteral("server"));
    QDBusConnection panel_ = bus_.connect(QStringLiteral("panel"));
    StatusNotifierItem item_{server_, QStringLiteral("/icons"), QStringLiteral("/Menu")};
    SignalRecorder recorder_{panel_, server_.baseService(), StatusNotifierItem::objectPath(), itemName};
};

TEST_F(StatusNotifierItemTest, ShowsItsStateAsProperties) {
    item_.setState(someState());
    QVariantMap properties = allProperties();
    EXPECT_EQ(qdbus_cast<IconPixmaps>(properties.take(QStringLiteral("IconPixmap"))),
              someState().pixmaps.get());
    EXPECT_EQ(qdbus_cast<IconPixmaps>(properties.take(QStringLiteral("OverlayIconPixmap"))), IconPixmaps());
    EXPECT_EQ(qdbus_cast<IconPixmaps>(properties.take(QStringLiteral("AttentionIconPixmap"))), IconPixmaps());
    EXPECT_EQ(qdbus_cast<StatusToolTip>(properties.take(QStringLiteral("ToolTip"))),
              (StatusToolTip{{}, {}, QStringLiteral("45°C"), {}}));
    EXPECT_EQ(properties.take(QStringLiteral("Menu")).value<QDBusObjectPath>().path(),
              QStringLiteral("/Menu"));
    const QVariantMap rest{
        {QStringLiteral("Category"), QStringLiteral("Hardware")},
        {QStringLiteral("Id"), QStringLiteral("calorivo")},
        {QStringLiteral("Title"), QStringLiteral("45°C")},
        {QStringLiteral("Status"), QStringLiteral("Active")},
        {QStringLiteral("WindowId"), 0},
        {QStringLiteral("IconName"), QStringLiteral("thermometer")},
        {QStringLiteral("IconThemePath"), QStringLiteral("/icons")},
        {QStringLiteral("OverlayIconName"), QString()},
        {QStringLiteral("AttentionIconName"), QString()},
        {QStringLiteral("AttentionMovieName"), QString()},
        {QStringLiteral("ItemIsMenu"), false},
        {QStringLiteral("XAyatanaLabel"), QStringLiteral("45°C!")},
        {QStringLiteral("XAyatanaLabelGuide"), QStringLiteral("88°C!")},
    };
    EXPECT_EQ(properties, rest);
}

TEST_F(StatusNotifierItemTest, HasNoLabelPropertyWithoutALabel) {
    StatusNotifierState state = someState();
    state.label.reset();
    item_.setState(state);
    const QVariantMap properties = allProperties();
    EXPECT_FALSE(properties.contains(QStringLiteral("XAyatanaLabel")));
    EXPECT_FALSE(properties.contains(QStringLiteral("XAyatanaLabelGuide")));
    const QDBusMessage answer =
        call(propertiesName, QStringLiteral("Get"), {itemName, QStringLiteral("XAyatanaLabel")});
    EXPECT_EQ(answer.errorName(), QStringLiteral("org.freedesktop.DBus.Error.UnknownProperty"));
}

TEST_F(StatusNotifierItemTest, DrawsAnIconOnceAndOnlyWhenAPanelAsks) {
    int drawings = 0;
    StatusNotifierState state = someState();
    state.pixmaps = {QStringLiteral("counted"), [&drawings] {
                         ++drawings;
                         return IconPixmaps{{1, 1, QByteArray(4, 'x')}};
                     }};
    item_.setState(state);
    settle(panel_);
    EXPECT_EQ(drawings, 0);
    for (int i = 0; i < 3; ++i)
        call(propertiesName, QStringLiteral("Get"), {itemName, QStringLiteral("IconPixmap")});
    EXPECT_EQ(drawings, 1);
}

TEST_F(StatusNotifierItemTest, TellsOnlyWhatIsDifferent) {
    StatusNotifierState state = someState();
    EXPECT_THAT(signalsAfter(state), ElementsAre("NewIcon", "NewTitle", "NewToolTip", "XAyatanaNewLabel"));
    EXPECT_THAT(signalsAfter(state), IsEmpty());
    state.iconName = QStringLiteral("other");
    EXPECT_THAT(signalsAfter(state), ElementsAre("NewIcon"));
    state.pixmaps = {};
    EXPECT_THAT(signalsAfter(state), ElementsAre("NewIcon"));
    state.title = QStringLiteral("46°C");
    EXPECT_THAT(signalsAfter(state), ElementsAre("NewTitle", "NewToolTip"));
    state.label = QStringLiteral("46°C");
    EXPECT_THAT(signalsAfter(state), ElementsAre("XAyatanaNewLabel"));
    state.labelGuide = QStringLiteral("888°C");
    EXPECT_THAT(signalsAfter(state), ElementsAre("XAyatanaNewLabel"));
    state.label.reset();
    EXPECT_THAT(signalsAfter(state), ElementsAre("XAyatanaNewLabel"));
    EXPECT_THAT(signalsAfter(state), IsEmpty());
}

TEST_F(StatusNotifierItemTest, SendsTheLabelWithItsSignal) {
    item_.setState(someState());
    settle(panel_);
    const std::vector<QDBusMessage> messages = recorder_.take();
    ASSERT_FALSE(messages.empty());
    EXPECT_EQ(messages.back().arguments(), (QVariantList{QStringLiteral("45°C!"), QStringLiteral("88°C!")}));
}

TEST_F(StatusNotifierItemTest, IsActivatedWithTheTokenThatCameBefore) {
    const QSignalSpy activated(&item_, &StatusNotifierItem::activated);
    call(itemName, QStringLiteral("ProvideXdgActivationToken"), {QStringLiteral("token-1")});
    call(itemName, QStringLiteral("Activate"), {10, 20});
    call(itemName, QStringLiteral("Activate"), {10, 20});
    settle(panel_);
    ASSERT_EQ(activated.size(), 2);
    EXPECT_EQ(activated.at(0), QVariantList{QStringLiteral("token-1")});
    EXPECT_EQ(activated.at(1), QVariantList{QString()});
}

TEST_F(StatusNotifierItemTest, AsksForItsMenuWhereAPanelDrawsNone) {
    const QSignalSpy requested(&item_, &StatusNotifierItem::contextMenuRequested);
    call(itemName, QStringLiteral("ContextMenu"), {10, 20});
    settle(panel_);
    ASSERT_EQ(requested.size(), 1);
    EXPECT_EQ(requested.at(0).at(0).toPoint(), QPoint(10, 20));
}

TEST_F(StatusNotifierItemTest, AnswersWhatItHasNoUseFor) {
    EXPECT_EQ(call(itemName, QStringLiteral("SecondaryActivate"), {1, 2}).errorName(), QString());
    EXPECT_EQ(call(itemName, QStringLiteral("XAyatanaSecondaryActivate"), {1U}).errorName(), QString());
    EXPECT_EQ(call(itemName, QStringLiteral("Scroll"), {-120, QStringLiteral("vertical")}).errorName(),
              QString());
}

TEST(StatusNotifierTypes, PutsTheBytesOfAPixelInTheOrderOfTheNetwork) {
    QImage image(2, 3, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    image.setPixelColor(0, 0, QColor(1, 2, 3, 255));
    image.setPixelColor(1, 2, QColor(255, 0, 0, 51));
    const IconPixmap pixmap = toIconPixmap(image);
    QByteArray expected(24, '\0');
    expected.replace(0, 4, QByteArray("\xff\x01\x02\x03", 4));
    expected.replace(20, 4, QByteArray("\x33\xff\x00\x00", 4));
    EXPECT_EQ(pixmap, (IconPixmap{2, 3, expected}));
    EXPECT_EQ(toIconPixmap(QImage()), IconPixmap());
}

}  // namespace
}  // namespace calorivo
