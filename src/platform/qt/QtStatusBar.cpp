#include "platform/qt/QtStatusBar.h"

#include "platform/qt/QtStatusBarItem.h"

#include <utility>

namespace calorivo {

QDBusConnection connectToSessionBus(const QString& name) {
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
}

QtStatusBar::QtStatusBar(const QDBusConnection& bus, StatusBarResources resources, BusConnector connector)
    : resources_(std::move(resources)), connector_(std::move(connector)), host_(bus) {
    connect(&host_, &StatusNotifierHost::hostChanged, this, &QtStatusBar::hostChanged);
}

QtStatusBar::~QtStatusBar() = default;

std::unique_ptr<StatusBarItem> QtStatusBar::statusItemWithLength(double /*length*/) {
    static int items = 0;
    auto item = std::make_unique<QtStatusBarItem>(
        *this, OwnConnection(connector_, QStringLiteral("calorivo-status-item-%1").arg(++items)));
    connect(item.get(), &QtStatusBarItem::activated, this, &QtStatusBar::activated);
    return item;
}

void QtStatusBar::setTitlePlace(TitlePlace place) {
    if (place == titlePlace_) return;
    titlePlace_ = place;
    Q_EMIT titlePlaceChanged();
}

}  // namespace calorivo
