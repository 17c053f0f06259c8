#pragma once

#include "app/Configuration.h"

#include <QDialog>
#include <QString>

QT_BEGIN_NAMESPACE
class QLabel;
class QVBoxLayout;
QT_END_NAMESPACE

namespace calorivo {

class Actions;

/// What the program is, who made it, on which terms it may be used, and how to reach its makers. Escape and
/// Ctrl+W close it. Main thread.
class AboutWindow final : public QDialog {
    Q_OBJECT

  public:
    explicit AboutWindow(const QString& version, QWidget* parent = nullptr);

    /// Adds the links, which trigger the actions; to be called once. The actions must outlive this window.
    void attach(Actions& actions, const LinkTargets& targets);

  private:
    void addTexts(const QString& version);
    QLabel& addText(const char* objectName, const QString& text);
    void addTranslators();
    void addShortcut();

    QVBoxLayout& texts_;
};

}  // namespace calorivo
