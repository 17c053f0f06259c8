#include "ui/qt/VantixPanelViews.h"

#include <QVBoxLayout>

#include <cmath>

namespace calorivo {

namespace {

/// Of a widget in its parent or on its screen: y upwards, from a zero at the top.
Rectangle upwards(const QRect& rectangle) {
    return {static_cast<double>(rectangle.x()), static_cast<double>(-rectangle.y() - rectangle.height()),
            static_cast<double>(rectangle.width()), static_cast<double>(rectangle.height())};
}

int rounded(double value) { return static_cast<int>(std::lround(value)); }

}  // namespace

VantixPanelViews::VantixPanelViews(QMainWindow& window)
    : window_(window),
      content_(window.takeCentralWidget()),
      strip_(new QWidget),
      panel_(new VantixPanel),
      upgradeWindow_(new VantixUpgradeWindow(&window)) {
    constexpr int space = 8;
    auto* const around = new QVBoxLayout(strip_);
    around->setContentsMargins(space, space, space, space);
    around->addWidget(panel_);
    auto* const everything = new QWidget;
    auto* const column = new QVBoxLayout(everything);
    column->setContentsMargins({});
    column->setSpacing(0);
    if (content_ != nullptr) {
        column->addWidget(content_, 1);
        content_->show();
    }
    column->addWidget(strip_);
    window.setCentralWidget(everything);
}

void VantixPanelViews::connectTo(VantixView& promotion) {
    QObject::connect(panel_, &VantixPanel::closeWanted, panel_, [&promotion] { promotion.hideVantixView(); });
    QObject::connect(panel_, &VantixPanel::learnMoreWanted, panel_,
                     [&promotion] { promotion.learnMoreVantixClicked(); });
    QObject::connect(upgradeWindow_, &VantixUpgradeWindow::downloadWanted, upgradeWindow_,
                     [&promotion] { promotion.upgradeToVantixClicked(); });
}

void VantixPanelViews::setTexts(const PromotionTexts& texts) {
    panel_->setTexts(texts);
    upgradeWindow_->setTexts(texts);
}

void VantixPanelViews::setPanelHidden(bool isHidden) { strip_->setVisible(!isHidden); }

double VantixPanelViews::panelHeight() const {
    if (window_.isVisible()) return strip_->height();
    // A window that was not shown yet has not given its parts their sizes.
    const QLayout& around = *strip_->layout();
    return around.hasHeightForWidth() ? around.heightForWidth(window_.width()) : around.sizeHint().height();
}

void VantixPanelViews::setPanelRoundedCorners(CornerMask corners) { panel_->setRoundedCorners(corners); }

Rectangle VantixPanelViews::windowFrame() const { return upwards(window_.geometry()); }

void VantixPanelViews::setWindowFrame(const Rectangle& frame) {
    if (window_.isMaximized() || window_.isFullScreen()) return;
    window_.centralWidget()->layout()->activate();
    const QPoint corner(rounded(frame.x), rounded(-frame.y - frame.height));
    if (corner != window_.geometry().topLeft()) window_.move(corner);
    window_.resize(rounded(frame.width), rounded(frame.height));
}

Rectangle VantixPanelViews::mainViewFrame() const {
    return content_ != nullptr ? upwards(content_->geometry()) : Rectangle();
}

}  // namespace calorivo
