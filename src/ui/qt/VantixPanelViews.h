#pragma once

#include "app/VantixView.h"
#include "ui/qt/VantixPanel.h"
#include "ui/qt/VantixUpgradeWindow.h"

#include <QMainWindow>
#include <QPointer>

namespace calorivo {

/// The promotion in a main window: the panel below everything else in it, and the upgrade window over it. The
/// window's layout sizes the content by itself as soon as the panel is hidden. Main thread.
class VantixPanelViews final : public PromotionViews {
  public:
    /// Puts the panel into the window, which must have its content; the window owns panel and upgrade window
    /// and must outlive this object.
    explicit VantixPanelViews(QMainWindow& window);

    [[nodiscard]] VantixPanel& panel() { return *panel_; }
    [[nodiscard]] VantixUpgradeWindow& upgradeWindow() { return *upgradeWindow_; }
    /// Has the buttons do what they say. `promotion` must outlive the window's event handling.
    void connectTo(VantixView& promotion);

    void setTexts(const PromotionTexts& texts) override;
    void setPanelHidden(bool isHidden) override;
    [[nodiscard]] double panelHeight() const override;
    void setPanelRoundedCorners(CornerMask corners) override;
    [[nodiscard]] Rectangle windowFrame() const override;
    /// A window that fills the screen keeps its size.
    void setWindowFrame(const Rectangle& frame) override;
    [[nodiscard]] Rectangle mainViewFrame() const override;
    /// The layout has done it.
    void setMainViewFrame(const Rectangle& /*frame*/) override {}
    [[nodiscard]] AutoresizingMask mainViewAutoresizingMask() const override { return mask_; }
    void setMainViewAutoresizingMask(AutoresizingMask mask) override { mask_ = mask; }
    void orderOutUpgradeWindow() override { upgradeWindow_->hide(); }

  private:
    QMainWindow& window_;
    QWidget* content_;
    /// The panel with the space around it.
    QWidget* strip_;
    VantixPanel* panel_;
    VantixUpgradeWindow* upgradeWindow_;
    AutoresizingMask mask_ = 0;
};

}  // namespace calorivo
