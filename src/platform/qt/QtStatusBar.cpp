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
    auto item = std::make_unique<QtStatusBarItem>(*this);
    connect(item.get(), &QtStatusBarItem::activated, this, &QtStatusBar::activated);
    return item;
}

QDBusConnection QtStatusBar::newConnection() const {
    static int connections = 0;  // QtDBus knows connections by their names, in the whole program
    return connector_(QStringLiteral("calorivo-status-item-%1").arg(++connections));
}

void QtStatusBar::setTitlePlace(TitlePlace place) {
    if (place == titlePlace_) return;
    titlePlace_ = place;
    Q_EMIT titlePlaceChanged();
}

}  // namespace calorivo
