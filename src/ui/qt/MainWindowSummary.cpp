#include "ui/qt/MainWindowSummary.h"

#include "monitor/Fans.h"
#include "ui/qt/AveragesView.h"
#include "ui/qt/FanTable.h"
#include "ui/qt/FanTableModel.h"
#include "ui/qt/MainWindowText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace calorivo {

MainWindowSummary::MainWindowSummary(QWidget* parent)
    : QWidget(parent),
      averages_(new AveragesView(this)),
      fanSection_(new QWidget(this)),
      averageSpeed_(new QLabel(fanSection_)),
      fanTable_(new FanTable(fanSection_)) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    fanSection_->setObjectName(QStringLiteral("fanSection"));
    fanSection_->hide();
    averageSpeed_->setObjectName(QStringLiteral("averageFans"));
    averageSpeed_->setAccessibleName(tr("Average speed of the fans"));
    averageSpeed_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    averageSpeed_->setTextFormat(Qt::PlainText);
    // Of one size, so that a new speed is painted in place.
    averageSpeed_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    averageSpeed_->setFixedHeight(averageSpeed_->fontMetrics().height());

    auto* const section = new QVBoxLayout(fanSection_);
    section->setContentsMargins({});
    section->setSpacing(2);
    section->addWidget(fanTable_);
    section->addWidget(averageSpeed_);

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 10, 8, 10);
    layout->setSpacing(28);
    layout->addWidget(averages_, 0, Qt::AlignTop);
    layout->addWidget(fanSection_, 1);
    layout->addStretch(0);
}

void MainWindowSummary::setFans(const Fans& fans) {
    fanModel_ = new FanTableModel(fans, this);
    fanTable_->setFanModel(*fanModel_);
}

void MainWindowSummary::showAverages(const std::string& computer, const std::string& processor) {
    averages_->show(computer, processor);
}

void MainWindowSummary::reloadFans() {
    fanModel_->reload();
    fanSection_->setVisible(fanModel_->rowCount() > 0);
}

void MainWindowSummary::showAverageSpeed(const std::string& speed) {
    const QString text = tr("Average of all fans: %1").arg(asQString(speed));
    if (averageSpeed_->text() == text) return;
    averageSpeed_->setText(text);
    averageSpeed_->setAccessibleName(text);
}

}  // namespace calorivo
