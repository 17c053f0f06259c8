#pragma once

namespace calorivo {

class AlertPanel;
class Bundle;
class Dispatch;
class FileHandles;
class FileManager;
class GrowlApplicationBridge;
class IOKit;
class ProcessInfo;
class ProcessManager;
class SensorProvider;
class ServiceManagement;
class StandardUserDefaults;
class StatusBar;
class SysCtl;
class SystemLog;
class Workspace;

/// Everything that the program asks of the system it runs on. All must outlive the program's controller.
struct Platform {
    Dispatch& dispatch;
    IOKit& ioKit;
    /// The same object as `ioKit` where that one can also tell about its sensors.
    const SensorProvider* sensorProvider;
    SysCtl& sysCtl;
    FileManager& fileManager;
    FileHandles& fileHandles;
    Bundle& bundle;
    ProcessInfo& processInfo;
    StandardUserDefaults& userDefaults;
    ProcessManager& processManager;
    ServiceManagement& serviceManagement;
    StatusBar& statusBar;
    AlertPanel& alertPanel;
    Workspace& workspace;
    GrowlApplicationBridge& growl;
    SystemLog& systemLog;
};

}  // namespace calorivo
