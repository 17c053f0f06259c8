#include "platform/qt/QtStatusBarItem.h"

#include "platform/qt/TrayIconDigits.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QImage>
#include <QMetaObject>

#include <algorithm>
#include <array>
#include <utility>

namespace calorivo {

namespace {

/// Sizes that panels ask for, in pixels.
constexpr std::array pixmapSides{16, 22, 24, 32, 48};

/// The size of a title without a font of its own.
constexpr double menuBarPointSize = 14.0;
constexpr double smallestScale = 0.5;

double scaleFor(const AttributedString& title) {
    for (const AttributedString::Run& run : title.runs)
        if (run.attributes.font)
            return std::clamp(run.attributes.font->pointSize / menuBarPointSize, smallestScale, 1.0);
    return 1.0;
}

IconPixmaps pixmapsOfDigits(const QString& digits, double scale) {
    IconPixmaps pixmaps;
    for (const int side : pixmapSides) pixmaps.append(toIconPixmap(drawDigits(digits, side, scale)));
    return pixmaps;
}

IconPixmaps pixmapsOfIcon(const QIcon& icon, bool isTemplate) {
    IconPixmaps pixmaps;
    for (const int side : pixmapSides) {
        const QImage pixels = icon.pixmap(QSize(side, side), 1.0).toImage();
        if (!pixels.isNull()) pixmaps.append(toIconPixmap(isTemplate ? drawShape(pixels) : pixels));
    }
    return pixmaps;
}

IconPixmaps blankPixmaps() {
    QImage blank(pixmapSides.front(), pixmapSides.front(), QImage::Format_ARGB32);
    blank.fill(Qt::transparent);
    return {toIconPixmap(blank)};
}

}  // namespace

OwnConnection::~OwnConnection() {
    const QString name = bus_.name();
    bus_ = QDBusConnection(QString());
    if (!name.isEmpty()) QDBusConnection::disconnectFromBus(name);
}

QtStatusBarItem::Presence::Presence(const QtStatusBar& bar)
    : connection(bar.newConnection()),
      menu(connection.bus()),
      item(connection.bus(), bar.resources().iconThemePath, menu.path()) {}

QtStatusBarItem::QtStatusBarItem(const QtStatusBar& bar) : bar_(bar) {
    appear();
    connect(&bar, &QtStatusBar::titlePlaceChanged, this, &QtStatusBarItem::refreshSoon);
    const StatusNotifierHost& host = bar.host();
    connect(&host, &StatusNotifierHost::traitsChanged, this, &QtStatusBarItem::refreshSoon);
    connect(&host, &StatusNotifierHost::watcherAppeared, this, &QtStatusBarItem::registerAtWatcher);
    connect(&host, &StatusNotifierHost::hostChanged, this, [this](bool hasHost) {
        if (hasHost && !presence_->isRegistered) registerAtWatcher();
    });
    // Later: by then the item has its title and its menu.
    if (host.hasWatcher())
        QMetaObject::invokeMethod(this, &QtStatusBarItem::registerAtWatcher, Qt::QueuedConnection);
}

QtStatusBarItem::~QtStatusBarItem() = default;

void QtStatusBarItem::appear() {
    presence_ = std::make_unique<Presence>(bar_);
    presence_->menu.setMenu(menu_);
    presence_->item.setState(composedState());
    connect(&presence_->item, &StatusNotifierItem::activated, this, &QtStatusBarItem::activated);
    connect(&presence_->item, &StatusNotifierItem::contextMenuRequested, this, &QtStatusBarItem::popUpMenu);
}

void QtStatusBarItem::setTitle(const std::string& title) { show(title, 1.0); }

void QtStatusBarItem::setAttributedTitle(const AttributedString& title) { show(title.text, scaleFor(title)); }

void QtStatusBarItem::show(const std::string& title, double digitScale) {
    title_ = QString::fromStdString(title);
    digitScale_ = digitScale;
    refreshSoon();
}

void QtStatusBarItem::setImage(const std::optional<Image>& image) {
    image_ = image;
    refreshSoon();
}

void QtStatusBarItem::setMenu(std::string_view name) {
    menu_ = bar_.resources().menu ? bar_.resources().menu(name) : nullptr;
    presence_->menu.setMenu(menu_);
}

void QtStatusBarItem::setHighlightMode(bool /*isHighlighted*/) {}

void QtStatusBarItem::refreshSoon() {
    if (std::exchange(isRefreshPending_, true)) return;
    QMetaObject::invokeMethod(this, &QtStatusBarItem::refresh, Qt::QueuedConnection);
}

void QtStatusBarItem::refresh() {
    isRefreshPending_ = false;
    StatusNotifierState state = composedState();
    const bool losesLabel = presence_->item.state().label && !state.label;
    if (losesLabel && bar_.host().traits().label == LabelSupport::insteadOfIcon) {
        // Such a panel does not put the icon back: it has to meet another item.
        appear();
        registerAtWatcher();
    } else if (bar_.host().hasWatcher()) {
        presence_->item.setState(std::move(state));
    } else {
        presence_->item.setStateSilently(std::move(state));
    }
}

StatusNotifierState QtStatusBarItem::composedState() const {
    const StatusBarResources& resources = bar_.resources();
    const TrayIconContents contents =
        trayIconContents(title_, image_.has_value(), bar_.titlePlace(), bar_.host().traits());
    StatusNotifierState state;
    state.title = title_.isEmpty() ? QStringLiteral("Calorivo") : title_;
    state.label = contents.label;
    if (contents.label) state.labelGuide = widestTitle(*contents.label);
    switch (contents.icon) {
        case TrayIconKind::image:
            state.iconName = resources.iconName;
            state.pixmaps = pixmapsOfImage();
            break;
        case TrayIconKind::blank:
            state.iconName = resources.blankIconName;
            state.pixmaps = {QStringLiteral("blank"), blankPixmaps};
            break;
        case TrayIconKind::digits:
            state.pixmaps = {
                QStringLiteral("digits %1 %2").arg(contents.digits).arg(digitScale_),
                [digits = contents.digits, scale = digitScale_] { return pixmapsOfDigits(digits, scale); }};
            break;
    }
    return state;
}

DrawnPixmaps QtStatusBarItem::pixmapsOfImage() const {
    const StatusBarResources& resources = bar_.resources();
    const Image& image = image_ ? *image_ : resources.fallbackImage;
    const auto kind = image.isTemplate ? QStringLiteral("shape %1") : QStringLiteral("image %1");
    return {kind.arg(QString::fromStdString(image.name)), [icon = resources.icon, image] {
                return icon ? pixmapsOfIcon(icon(image.name, image.isTemplate), image.isTemplate)
                            : IconPixmaps();
            }};
}

void QtStatusBarItem::registerAtWatcher() {
    const QDBusConnection& bus = presence_->connection.bus();
    if (!bus.isConnected() || !bar_.host().hasWatcher()) return;
    presence_->item.setState(composedState());
    // The unique name: some panels lose an item that registers by a well-known one.
    QDBusMessage call = QDBusMessage::createMethodCall(
        StatusNotifierHost::watcherName(), StatusNotifierHost::watcherPath(),
        StatusNotifierHost::watcherName(), QStringLiteral("RegisterStatusNotifierItem"));
    call.setAutoStartService(false);
    call << bus.baseService();
    presence_->isRegistered = true;
    auto* const pending = new QDBusPendingCallWatcher(bus.asyncCall(call), &presence_->item);
    connect(pending, &QDBusPendingCallWatcher::finished, &presence_->item,
            [presence = presence_.get(), pending] {
                if (pending->isError()) presence->isRegistered = false;
                pending->deleteLater();
            });
}

void QtStatusBarItem::popUpMenu(QPoint position) const {
    if (menu_ != nullptr) menu_->popup(position);
}

}  // namespace calorivo
