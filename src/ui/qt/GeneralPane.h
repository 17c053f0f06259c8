#pragma once

#include "platform/KeyValueCoding.h"

#include <QWidget>

namespace calorivo {

class PaneForm;

/// How the program starts and looks.
class GeneralPane final : public QWidget {
    Q_OBJECT

  public:
    /// `desktopKeys` has "colorScheme". Both must outlive this pane.
    GeneralPane(const KeyValueCoding& keys, const KeyValueCoding& desktopKeys, QWidget* parent);

  private:
    void addMode(PaneForm& form, const KeyValueCoding& keys);
    void addColors(PaneForm& form, const KeyValueCoding& desktopKeys);
};

}  // namespace calorivo
