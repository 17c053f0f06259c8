#pragma once

#include "platform/Workspace.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// Opens things by the desktop's own opener, as a program of its own that outlives this one; no shell sees an
/// address. When the environment holds an activation token, what is opened gets it, once. Main thread.
class QtWorkspace final : public Workspace {
  public:
    /// `bus` is the session's. `opener` is a program that takes one address, by name or by path.
    explicit QtWorkspace(QDBusConnection bus, QString opener = QStringLiteral("xdg-open"));

    /// False also for a text that is no address: one that does not begin with a scheme.
    bool openURL(std::string_view url) override;
    /// False also for a path that is not absolute or not there.
    bool openFile(std::string_view fullPath) override;
    /// Asks the desktop's program for folders, without waiting for it; opens the folder of the first file
    /// when none answers.
    void activateFileViewerSelectingURLs(const std::vector<std::string>& urls) override;

  private:
    bool start(const QByteArray& address);

    QDBusConnection bus_;
    QString opener_;
    /// Answers that come after this object's end are dropped with it.
    QObject answers_;
};

}  // namespace calorivo
