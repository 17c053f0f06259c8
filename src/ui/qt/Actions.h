#pragma once

#include "platform/Property.h"

#include <QAction>
#include <QKeySequence>
#include <QObject>

#include <string>
#include <string_view>

namespace calorivo {

class PyroluxAppDelegate;

/// Every command of the program as one QAction: menus, tool bars and the status menu share them. The actions
/// are children of this object, named as its members. Main thread.
class Actions final : public QObject {
    Q_OBJECT

  public:
    explicit Actions(QObject* parent = nullptr);

    QAction* showMainWindow;
    QAction* preferences;
    QAction* resetMaximums;
    QAction* copyRows;
    QAction* findSensor;
    /// Checkable.
    QAction* showDetails;
    /// These two are checkable, one of them at a time.
    QAction* celsius;
    QAction* fahrenheit;
    QAction* closeWindow;
    QAction* quit;
    QAction* statusQuit;
    QAction* about;
    QAction* statusAbout;
    QAction* help;
    QAction* feedback;
    QAction* rate;
    QAction* follow;
    QAction* moreApps;
    QAction* newsletter;
    QAction* openLog;
    QAction* revealLog;

    /// Connects windows, unit, maxima, links and mails to the controller's parts; the unit's check marks
    /// follow it, and the log's file can be opened while there is one. quit, statusQuit, copyRows,
    /// findSensor, showDetails, closeWindow, openLog, revealLog, about and statusAbout are connected by the
    /// caller. To be called once; the controller must outlive the last use of an action.
    void attach(PyroluxAppDelegate& delegate);

    /// Of statusQuit: a single letter, pressed together with Ctrl; empty removes the shortcut.
    void setQuitMenuItemKeyEquivalent(std::string_view key);
    /// The title as it is to be read.
    void setStatusAboutMenuItemTitle(const std::string& title);

  private:
    [[nodiscard]] QAction* make(const char* name, const QString& text, const QKeySequence& shortcut = {});
    void makeUnitsExclusive();
    void setRoles();
    void attachLinks(PyroluxAppDelegate& delegate);
    void attachUnit(PyroluxAppDelegate& delegate);
    void attachLog(PyroluxAppDelegate& delegate);

    Observation logFileObservation_;
    Observation unitObservation_;
};

}  // namespace calorivo
