#pragma once

#include "app/Ports.h"
#include "app/Windows.h"
#include "platform/AlertPanel.h"
#include "platform/Bundle.h"
#include "platform/GrowlApplicationBridge.h"
#include "platform/Platform.h"
#include "platform/ProcessInfo.h"
#include "platform/ProcessManager.h"
#include "platform/SensorProvider.h"
#include "platform/ServiceManagement.h"
#include "platform/StatusBar.h"
#include "platform/SystemLog.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"
#include "support/FakeFileHandles.h"
#include "support/FakeFileManager.h"
#include "support/FakeSmc.h"
#include "support/FakeSysCtl.h"
#include "support/VirtualDispatch.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// A whole platform in memory that writes down, in one list, every call that is made to it.

namespace calorivo::test {

/// The calls, each as one line: its name, then its arguments.
using Calls = std::vector<std::string>;

/// The value as it is written in a call: nil, YES, NO, a number, a text, or the size of data.
[[nodiscard]] std::string described(const Value& value);

class RecordingUserDefaults final : public StandardUserDefaults {
  public:
    explicit RecordingUserDefaults(Calls& calls) : calls_(calls) {}

    [[nodiscard]] Value objectForKey(std::string_view key) const override;
    void setObjectForKey(const Value& value, std::string_view key) override;
    void registerDefaults(const PropertyList& defaults) override;
    void synchronize() override { calls_.emplace_back("synchronize"); }

    std::map<std::string, Value, std::less<>> stored;
    std::map<std::string, Value, std::less<>> registered;

  private:
    Calls& calls_;
};

/// Answers with `answers`, one after another, then always with the default button.
class RecordingAlertPanel final : public AlertPanel {
  public:
    explicit RecordingAlertPanel(Calls& calls) : calls_(calls) {}
    AlertAnswer runModal(const Alert& alert) override;

    std::vector<Alert> alerts;
    std::deque<AlertAnswer> answers;
    /// What happens while the alert is shown.
    std::function<void()> meanwhile;

  private:
    Calls& calls_;
};

/// What the one status item shows.
struct ShownStatusItem {
    bool exists = false;
    std::optional<std::string> title;
    std::optional<AttributedString> attributedTitle;
    std::optional<Image> image;
    std::string menu;
};

class RecordingStatusBar final : public StatusBar {
  public:
    explicit RecordingStatusBar(Calls& calls) : calls_(calls) {}
    [[nodiscard]] std::unique_ptr<StatusBarItem> statusItemWithLength(double length) override;

    ShownStatusItem shown;

  private:
    Calls& calls_;
};

class RecordingServiceManagement final : public ServiceManagement {
  public:
    explicit RecordingServiceManagement(Calls& calls) : calls_(calls) {}
    bool SMLoginItemSetEnabled(std::string_view identifier, bool isEnabled) override;

    bool fails = false;

  private:
    Calls& calls_;
};

class RecordingProcessManager final : public ProcessManager {
  public:
    explicit RecordingProcessManager(Calls& calls) : calls_(calls) {}
    void transformProcessTypeToForegroundApplication() override {
        calls_.emplace_back("TransformProcessType");
    }
    void SetFrontProcess() override { calls_.emplace_back("SetFrontProcess"); }

  private:
    Calls& calls_;
};

class RecordingProcessInfo final : public ProcessInfo {
  public:
    explicit RecordingProcessInfo(Calls& calls) : calls_(calls) {}
    [[nodiscard]] std::vector<std::string> arguments() const override;
    [[nodiscard]] std::string operatingSystemVersionString() const override;

    std::vector<std::string> given{"calorivo"};
    std::string system = "Fakix 7.5 (build 9)";

  private:
    Calls& calls_;
};

class RecordingBundle final : public Bundle {
  public:
    explicit RecordingBundle(Calls& calls) : calls_(calls) {}
    [[nodiscard]] std::optional<PropertyList> dictionaryForResource(std::string_view name,
                                                                    std::string_view type) const override;
    [[nodiscard]] std::string objectForInfoDictionaryKey(std::string_view key) const override;

    /// The only resource: "Defaults".
    std::optional<PropertyList> defaults = PropertyList{};
    std::map<std::string, std::string, std::less<>> information{{"CFBundleVersion", "3.1"},
                                                                {"CFBundleShortVersionString", "3.1 beta"}};

  private:
    Calls& calls_;
};

class RecordingWorkspace final : public Workspace {
  public:
    explicit RecordingWorkspace(Calls& calls) : calls_(calls) {}
    bool openURL(std::string_view url) override {
        calls_.push_back("openURL " + std::string(url));
        return true;
    }
    bool openFile(std::string_view fullPath) override {
        calls_.push_back("openFile " + std::string(fullPath));
        return true;
    }
    void activateFileViewerSelectingURLs(const std::vector<std::string>& urls) override {
        std::string call = "activateFileViewerSelectingURLs";
        for (const std::string& url : urls) call += ' ' + url;
        calls_.push_back(call);
    }

  private:
    Calls& calls_;
};

class RecordingSystemLog final : public SystemLog {
  public:
    explicit RecordingSystemLog(Calls& calls) : calls_(calls) {}
    void log(std::string_view line) override { calls_.push_back("log " + std::string(line)); }

  private:
    Calls& calls_;
};

/// A notification service, there from the beginning unless `isPresent` says otherwise.
class RecordingGrowl final : public GrowlApplicationBridge {
  public:
    explicit RecordingGrowl(Calls& calls) : calls_(calls) {}
    void load(Loaded loaded) override;
    void setGrowlDelegate(GrowlApplicationBridgeDelegate* delegate) override;
    [[nodiscard]] bool respondsToNotify() const override { return isPresent; }
    void notify(const GrowlNotification& notification) override;
    /// The service comes, now or as another one.
    void appear(const std::string& name, const std::string& version);

    bool isPresent = true;
    GrowlApplicationBridgeDelegate* delegate = nullptr;
    std::vector<GrowlNotification> posted;

  private:
    Calls& calls_;
    Loaded loaded_;
};

/// Virtual time and queues; serial queues and timers are written down.
class RecordingDispatch final : public Dispatch {
  public:
    explicit RecordingDispatch(Calls& calls) : calls_(calls) {}
    [[nodiscard]] Queue& mainQueue() override { return time.mainQueue(); }
    [[nodiscard]] std::unique_ptr<Queue> makeSerialQueue(std::string label) override;
    [[nodiscard]] std::unique_ptr<Timer> scheduleTimer(std::chrono::nanoseconds interval, Repeats repeats,
                                                       std::function<void()> action) override;
    [[nodiscard]] Moment now() const override { return time.now(); }
    [[nodiscard]] WallTime wallTime() const override { return time.wallTime(); }
    void sleep(std::chrono::nanoseconds duration) override { time.sleep(duration); }

    VirtualDispatch time;

  private:
    Calls& calls_;
};

/// The connection to a controller in memory: opening, closing and the reading of values are written down.
class RecordingSmc final : public IOKit {
  public:
    explicit RecordingSmc(Calls& calls) : calls_(calls) {}

    kern_return_t IOMasterPort(mach_port_t bootstrapPort, mach_port_t& masterPort) override;
    kern_return_t IOServiceGetMatchingServices(mach_port_t masterPort, const MatchingDictionary& matching,
                                               io_iterator_t& services) override;
    [[nodiscard]] io_object_t IOIteratorNext(io_iterator_t iterator) override;
    kern_return_t IOObjectRelease(io_object_t object) override;
    [[nodiscard]] task_port_t machTaskSelf() const override { return smc.machTaskSelf(); }
    kern_return_t IOServiceOpen(io_service_t service, task_port_t owningTask, std::uint32_t type,
                                io_connect_t& connection) override;
    kern_return_t IOServiceClose(io_connect_t connection) override;
    kern_return_t IOConnectCallStructMethod(io_connect_t connection, std::uint32_t selector,
                                            const void* input, std::size_t inputSize, void* output,
                                            std::size_t& outputSize) override;

    FakeSmc smc;

  private:
    Calls& calls_;
};

class RecordingWindows final : public Windows {
  public:
    explicit RecordingWindows(Calls& calls) : calls_(calls) {}
    void activateIgnoringOtherApps() override { calls_.emplace_back("activateIgnoringOtherApps"); }
    void center(WindowName window) override;
    void orderFront(WindowName window) override;
    void makeKeyAndOrderFront(WindowName window) override;
    void setCanHide(WindowName window, bool canHide) override;
    void setShouldCascadeWindows(WindowName window, bool shouldCascade) override;
    void setLevel(WindowName window, WindowLevel level) override;

  private:
    Calls& calls_;
};

class RecordingControls final : public Controls {
  public:
    explicit RecordingControls(Calls& calls) : calls_(calls) {}
    void setIntValue(LimitLabel label, std::int32_t value) override;
    void setSelectedItemIdentifier(std::string_view identifier) override;
    void selectTabViewItemAtIndex(std::int32_t index) override;
    void setStatusAboutMenuItemTitle(const std::string& title) override;
    void setQuitMenuItemKeyEquivalent(std::string_view key) override;

  private:
    Calls& calls_;
};

class RecordingTableView final : public SensorTableView {
  public:
    explicit RecordingTableView(Calls& calls) : calls_(calls) {}
    void reloadData() override { calls_.emplace_back("cpuTableView reloadData"); }
    void setNeedsDisplay() override { calls_.emplace_back("cpuTableView setNeedsDisplay"); }

  private:
    Calls& calls_;
};

class RecordingGPUSwitcher final : public GPUSwitcher {
  public:
    explicit RecordingGPUSwitcher(Calls& calls) : calls_(calls) {}
    bool switcherOpen() override;
    [[nodiscard]] Observation registerForGPUChangeNotifications(GPUChangeObserver& registered) override;
    [[nodiscard]] bool isUsingDiscreteGPU() override;

    bool exists = true;
    bool isDiscrete = true;
    /// Null unless one is registered.
    GPUChangeObserver* observer = nullptr;

  private:
    Calls& calls_;
};

/// Everything that the controller is given, and the list of what it did with it. The machine is a "Model1,2"
/// with no sensors. The parts that may be left out are all there but drives and GPU names.
struct RecordingPlatform {
    RecordingPlatform();
    ~RecordingPlatform();
    RecordingPlatform(const RecordingPlatform&) = delete;
    RecordingPlatform& operator=(const RecordingPlatform&) = delete;

    [[nodiscard]] Platform platform();
    [[nodiscard]] Interface interface() { return {windows, controls, cpuTableView}; }
    [[nodiscard]] ApplicationPorts ports();
    /// What was called since the last time, one call a line.
    [[nodiscard]] std::string takeCalls();

    Calls calls;
    RecordingDispatch dispatch{calls};
    RecordingSmc ioKit{calls};
    FakeSysCtl sysCtl;
    FakeFileManager fileManager;
    RecordingBundle bundle{calls};
    RecordingProcessInfo processInfo{calls};
    RecordingUserDefaults userDefaults{calls};
    RecordingProcessManager processManager{calls};
    RecordingServiceManagement serviceManagement{calls};
    RecordingStatusBar statusBar{calls};
    RecordingAlertPanel alertPanel{calls};
    RecordingWorkspace workspace{calls};
    RecordingSystemLog systemLog{calls};
    FakeFileHandles fileHandles;
    RecordingGrowl growl{calls};
    RecordingWindows windows{calls};
    RecordingControls controls{calls};
    RecordingTableView cpuTableView{calls};
    RecordingGPUSwitcher gpuSwitcher{calls};
};

}  // namespace calorivo::test
