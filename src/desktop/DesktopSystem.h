#pragma once

#include "desktop/DesktopOptions.h"
#include "host/KeysInput.h"
#include "host/ProviderSysCtl.h"
#include "platform/Platform.h"
#include "platform/linux/LinuxFileHandle.h"
#include "platform/linux/LinuxFileManager.h"
#include "platform/linux/LinuxPaths.h"
#include "platform/linux/LinuxProcessInfo.h"
#include "platform/linux/LinuxProcessManager.h"
#include "platform/linux/LinuxSystemLog.h"
#include "platform/linux/LoginItem.h"
#include "platform/qt/ApplicationBundle.h"
#include "platform/qt/DBusNotifications.h"
#include "platform/qt/PreferencesStore.h"
#include "platform/qt/QtAlertPanel.h"
#include "platform/qt/QtDispatch.h"
#include "platform/qt/QtStatusBar.h"
#include "platform/qt/QtWorkspace.h"

#include <memory>
#include <string>
#include <vector>

namespace calorivo {

/// Everything below the program's controller: the source of values, and the desktop's services. Main thread.
class DesktopSystem {
  public:
    /// `options` must outlive it.
    DesktopSystem(const DesktopOptions& options, LinuxPaths paths, StatusBarResources statusBarResources);

    /// Opens the keys file or folder that the options name; what is wrong with it, empty when nothing is.
    /// First of all.
    [[nodiscard]] std::string openSource();
    /// The tables for this machine, and what is wrong with their files.
    [[nodiscard]] std::vector<ModelTable> modelTables(std::vector<std::string>& problems);
    /// After openSource().
    [[nodiscard]] Platform platform();
    [[nodiscard]] SensorProvider& provider() { return *provider_; }

    LinuxSystemLog systemLog;
    PreferencesStore store;
    QtDispatch dispatch;
    LinuxProcessManager processManager;
    DBusNotifications notifications;
    QtStatusBar statusBar;
    QtWorkspace workspace;
    QtAlertPanel alertPanel;
    ApplicationBundle bundle;
    LinuxFileManager fileManager;

  private:
    const DesktopOptions& options_;
    const LinuxPaths paths_;
    LinuxFileHandles fileHandles_;
    KeysInput keysInput_{fileManager};
    std::unique_ptr<SensorProvider> provider_;
    std::unique_ptr<ProviderSysCtl> sysCtl_;
    LinuxProcessInfo processInfo_;
    LoginItem loginItem_;
};

}  // namespace calorivo
