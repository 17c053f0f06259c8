#include "ui/qt/MainWindowStatus.h"

#include "ui/qt/MainWindowText.h"

#include <QDateTime>
#include <QFileInfo>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <chrono>

namespace calorivo {

namespace {

constexpr int margin = 8;

}  // namespace

QString sourceInWords(std::string_view sourceName, const QString& sourceDetail) {
    if (sourceName == "applesmc") return MainWindowStatus::tr("Apple SMC");
    if (sourceName == "simulated") return MainWindowStatus::tr("Simulated Mac");
    if (sourceName == "keysfile")
        return MainWindowStatus::tr("Keys file %1").arg(QFileInfo(sourceDetail).fileName()).trimmed();
    if (sourceName == "none" || sourceName.empty()) return MainWindowStatus::tr("No sensors");
    return asQString(sourceName);
}

MainWindowStatus::MainWindowStatus(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("statusLine"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void MainWindowStatus::setMachine(const QString& text, const QString& toolTip) {
    setToolTip(toolTip);
    if (machine_ == text) return;
    machine_ = text;
    tellAccessibility();
    update();
}

void MainWindowStatus::setLastCheck(std::optional<WallTime> time) {
    std::optional<qint64> second;
    if (time) second = std::chrono::duration_cast<std::chrono::seconds>(time->time_since_epoch()).count();
    if (second == shownSecond_) return;
    shownSecond_ = second;
    const QRect before = lastCheckPlace();
    lastCheck_ = second ? tr("Last check: %1")
                              .arg(QDateTime::fromSecsSinceEpoch(*second).toString(
                                  //: The time of day, as QDateTime::toString takes it.
                                  tr("HH:mm:ss")))
                        : QString();
    tellAccessibility();
    update(before.united(lastCheckPlace()));
}

QSize MainWindowStatus::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 60, fontMetrics().height() + margin};
}

QSize MainWindowStatus::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 20, sizeHint().height()};
}

QRect MainWindowStatus::lastCheckPlace() const {
    const int advance = std::min(fontMetrics().horizontalAdvance(lastCheck_) + 2, width() - 2 * margin);
    return {width() - margin - advance, 0, advance, height()};
}

void MainWindowStatus::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    const QRect time = lastCheckPlace();
    painter.drawText(time, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, lastCheck_);
    const QRect rest(margin, 0, time.left() - 3 * margin, height());
    if (!event->region().intersects(rest)) return;
    painter.drawText(rest, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(machine_, Qt::ElideMiddle, rest.width()));
}

void MainWindowStatus::tellAccessibility() {
    setAccessibleName(lastCheck_.isEmpty() ? machine_ : machine_ + QStringLiteral(" · ") + lastCheck_);
}

}  // namespace calorivo
