#pragma once

#include "platform/KeyValueCoding.h"

#include <QFrame>

#include <functional>
#include <string>

QT_BEGIN_NAMESPACE
class QEvent;
class QLabel;
class QShowEvent;
QT_END_NAMESPACE

namespace calorivo {

/// What the menu bar shows, as it changes with the settings and the readings.
class PaneTitlePreview final : public QFrame {
    Q_OBJECT

  public:
    /// Both `keys` must outlive this control. `title` answers with the title as it would be shown now; it is
    /// asked only while the preview is seen.
    PaneTitlePreview(const KeyValueCoding& keys, const KeyValueCoding& desktopKeys,
                     std::function<std::string()> title, QWidget* parent);

  protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    /// When the setter that announced the change is through.
    void refreshLater();
    void refresh();

    const KeyValueCoding& keys_;
    const KeyValueCoding& desktopKeys_;
    std::function<std::string()> title_;
    QLabel& icon_;
    QLabel& text_;
    bool isToBeRefreshed_ = false;
};

}  // namespace calorivo
