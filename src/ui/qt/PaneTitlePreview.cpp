#include "ui/qt/PaneTitlePreview.h"

#include "platform/StatusBar.h"
#include "ui/qt/KeyBinding.h"
#include "ui/qt/TemplateIcon.h"

#include <QEvent>
#include <QFont>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QRegularExpression>
#include <QShowEvent>
#include <QStyle>

#include <array>
#include <string_view>
#include <utility>

namespace calorivo {

namespace {

/// What the title is made of; each check announces the averages.
constexpr std::array titleKeys{"showTempInMenuBar",
                               "showTemp2InMenuBar",
                               "showFanInMenuBar",
                               "menuBarTempSensorIndex",
                               "menuBarTemp2SensorIndex",
                               "menuBarFanSensorIndex",
                               "useSmallerMenuFont",
                               "useShorterTitles",
                               "showAppIcon",
                               "tempUnit",
                               "avgTempAsString",
                               "avgCPUTempAsString",
                               "avgRPMAsString"};

/// The first number, which is what fits into an icon.
QString digitsOf(const QString& title) {
    static const QRegularExpression number(QStringLiteral("(?<![0-9])-?[0-9]+"));
    return number.match(title).captured();
}

}  // namespace

PaneTitlePreview::PaneTitlePreview(const KeyValueCoding& keys, const KeyValueCoding& desktopKeys,
                                   std::function<std::string()> title, QWidget* parent)
    : QFrame(parent),
      keys_(keys),
      desktopKeys_(desktopKeys),
      title_(std::move(title)),
      icon_(*new QLabel(this)),
      text_(*new QLabel(this)) {
    setFrameShape(QFrame::StyledPanel);
    setObjectName(QStringLiteral("titlePreview"));
    icon_.setObjectName(QStringLiteral("titlePreviewIcon"));
    text_.setObjectName(QStringLiteral("titlePreviewText"));
    text_.setTextFormat(Qt::PlainText);
    icon_.setAccessibleName(tr("The icon"));
    auto* const line = new QHBoxLayout(this);
    line->addWidget(&icon_);
    line->addWidget(&text_, 1);
    for (const char* const key : titleKeys) KeyBinding::follow(*this, keys_, key, [this] { refreshLater(); });
    KeyBinding::follow(*this, desktopKeys_, "titlePlace", [this] { refreshLater(); });
}

void PaneTitlePreview::showEvent(QShowEvent* event) {
    refresh();
    QFrame::showEvent(event);
}

void PaneTitlePreview::changeEvent(QEvent* event) {
    // The icon is drawn in the colour of texts.
    if (event->type() == QEvent::PaletteChange) refreshLater();
    QFrame::changeEvent(event);
}

void PaneTitlePreview::refreshLater() {
    if (isToBeRefreshed_ || !isVisible()) return;
    isToBeRefreshed_ = true;
    QMetaObject::invokeMethod(this, &PaneTitlePreview::refresh, Qt::QueuedConnection);
}

void PaneTitlePreview::refresh() {
    constexpr double smaller = 0.85;
    isToBeRefreshed_ = false;
    if (!isVisible()) return;
    const QString title = QString::fromStdString(title_());
    const bool isInside =
        desktopKeys_.valueForKey("titlePlace").intValue() == static_cast<int>(TitlePlace::insideIcon);
    const QString shown = isInside ? digitsOf(title) : title;
    // Nobody would find an item that shows nothing at all.
    const bool hasIcon = shown.isEmpty() || (!isInside && keys_.valueForKey("showAppIcon").boolValue());
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    icon_.setPixmap(
        templateIcon(QStringLiteral("NewIcon_16px")).pixmap(QSize(size, size), devicePixelRatioF()));
    icon_.setVisible(hasIcon);
    QFont shownFont = font();
    if (keys_.valueForKey("useSmallerMenuFont").boolValue())
        shownFont.setPointSizeF(shownFont.pointSizeF() * smaller);
    text_.setFont(shownFont);
    text_.setText(shown);
}

}  // namespace calorivo
