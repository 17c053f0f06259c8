#pragma once

#include "platform/KeyValueCoding.h"
#include "ui/qt/PreferencesWindowPorts.h"

#include <QWidget>

QT_BEGIN_NAMESPACE
class QLineEdit;
class QPushButton;
QT_END_NAMESPACE

namespace calorivo {

class PaneForm;
class PaneNote;

/// What is logged, and where.
class LogPane final : public QWidget {
    Q_OBJECT

  public:
    /// `keys` must outlive this pane.
    LogPane(const KeyValueCoding& keys, PreferencesPorts ports, QWidget* parent);

    /// Shows which file there is now.
    void refreshPorts();

  private:
    void addFile(PaneForm& form);
    [[nodiscard]] QString logFilePath() const;
    [[nodiscard]] QPushButton* makeButton(const QString& text, const char* objectName,
                                          const std::function<void()>& port);

    const KeyValueCoding& keys_;
    PreferencesPorts ports_;
    QLineEdit* path_ = nullptr;
    QPushButton* open_ = nullptr;
    QPushButton* reveal_ = nullptr;
    PaneNote* fileNote_ = nullptr;
};

}  // namespace calorivo
