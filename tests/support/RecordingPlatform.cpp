#include "support/RecordingPlatform.h"

#include "platform/Format.h"

#include <array>
#include <utility>

namespace calorivo::test {

namespace {

std::string nameOf(WindowName window) {
    constexpr std::array<const char*, 3> names{"window", "prefWindow", "vantixUpgradeWindow"};
    return names.at(static_cast<std::size_t>(window));
}

const char* flag(bool isSet) { return isSet ? "YES" : "NO"; }

class RecordingStatusItem final : public StatusBarItem {
  public:
    RecordingStatusItem(Calls& calls, ShownStatusItem& shown) : calls_(calls), shown_(shown) {
        shown_.exists = true;
    }
    ~RecordingStatusItem() override { shown_.exists = false; }

    void setTitle(const std::string& title) override {
        calls_.push_back("statusItem setTitle \"" + title + '"');
        shown_.title = title;
        shown_.attributedTitle.reset();
    }
    void setAttributedTitle(const AttributedString& title) override {
        calls_.push_back("statusItem setAttributedTitle \"" + title.text + '"');
        shown_.attributedTitle = title;
        shown_.title.reset();
    }
    void setImage(const std::optional<Image>& image) override {
        calls_.push_back("statusItem setImage " + (image ? image->name : "nil"));
        shown_.image = image;
    }
    void setMenu(std::string_view name) override {
        calls_.push_back("statusItem setMenu " + std::string(name));
        shown_.menu = name;
    }
    void setHighlightMode(bool isHighlighted) override {
        calls_.push_back(std::string("statusItem setHighlightMode ") + flag(isHighlighted));
    }

  private:
    Calls& calls_;
    ShownStatusItem& shown_;
};

}  // namespace

std::string described(const Value& value) {
    if (value.isNil()) return "nil";
    if (value == Value(true) || value == Value(false)) return flag(value.boolValue());
    if (value == Value(value.dataValue())) return format("<%d bytes>", value.dataValue().size());
    return value.stringValue();
}

Value RecordingUserDefaults::objectForKey(std::string_view key) const {
    calls_.push_back("objectForKey " + std::string(key));
    if (const auto found = stored.find(key); found != stored.end()) return found->second;
    if (const auto found = registered.find(key); found != registered.end()) return found->second;
    return {};
}

void RecordingUserDefaults::setObjectForKey(const Value& value, std::string_view key) {
    calls_.push_back("setObject " + described(value) + " forKey " + std::string(key));
    if (value.isNil())
        stored.erase(std::string(key));
    else
        stored.insert_or_assign(std::string(key), value);
}

void RecordingUserDefaults::registerDefaults(const PropertyList& defaults) {
    calls_.push_back(format("registerDefaults of %d keys", defaults.size()));
    for (const auto& [key, value] : defaults) registered.insert_or_assign(key, value);
}

AlertAnswer RecordingAlertPanel::runModal(const Alert& alert) {
    calls_.push_back("runModal " + alert.message);
    alerts.push_back(alert);
    if (meanwhile) meanwhile();
    if (answers.empty()) return AlertAnswer::defaultButton;
    const AlertAnswer answer = answers.front();
    answers.pop_front();
    return answer;
}

std::unique_ptr<StatusBarItem> RecordingStatusBar::statusItemWithLength(double length) {
    calls_.push_back(format("statusItemWithLength %.0f", length));
    return std::make_unique<RecordingStatusItem>(calls_, shown);
}

bool RecordingServiceManagement::SMLoginItemSetEnabled(std::string_view identifier, bool isEnabled) {
    calls_.push_back(format("SMLoginItemSetEnabled %@ %@", identifier, flag(isEnabled)));
    return !fails;
}

std::vector<std::string> RecordingProcessInfo::arguments() const {
    calls_.emplace_back("arguments");
    return given;
}

std::string RecordingProcessInfo::operatingSystemVersionString() const {
    calls_.emplace_back("operatingSystemVersionString");
    return system;
}

std::optional<PropertyList> RecordingBundle::dictionaryForResource(std::string_view name,
                                                                   std::string_view type) const {
    calls_.push_back(format("dictionaryForResource %@ %@", name, type));
    return name == "Defaults" && type == "plist" ? defaults : std::nullopt;
}

std::string RecordingBundle::objectForInfoDictionaryKey(std::string_view key) const {
    const auto found = information.find(key);
    return found != information.end() ? found->second : std::string();
}

void RecordingGrowl::load(Loaded loaded) {
    calls_.emplace_back(loaded ? "Growl load" : "Growl unload");
    loaded_ = std::move(loaded);
    if (loaded_ && isPresent) loaded_("Fake Growl", "2.5");
}

void RecordingGrowl::setGrowlDelegate(GrowlApplicationBridgeDelegate* newDelegate) {
    calls_.emplace_back(newDelegate != nullptr ? "setGrowlDelegate" : "setGrowlDelegate nil");
    delegate = newDelegate;
}

void RecordingGrowl::notify(const GrowlNotification& notification) {
    calls_.push_back("notify " + notification.title);
    posted.push_back(notification);
}

void RecordingGrowl::appear(const std::string& name, const std::string& version) {
    isPresent = true;
    if (loaded_) loaded_(name, version);
}

std::unique_ptr<Queue> RecordingDispatch::makeSerialQueue(std::string label) {
    calls_.push_back("makeSerialQueue " + label);
    return time.makeSerialQueue(std::move(label));
}

std::unique_ptr<Timer> RecordingDispatch::scheduleTimer(std::chrono::nanoseconds interval, Repeats repeats,
                                                        std::function<void()> action) {
    calls_.push_back(format("scheduleTimer %d s%@",
                            std::chrono::duration_cast<std::chrono::seconds>(interval).count(),
                            repeats == Repeats::yes ? " repeating" : ""));
    return time.scheduleTimer(interval, repeats, std::move(action));
}

kern_return_t RecordingSmc::IOMasterPort(mach_port_t bootstrapPort, mach_port_t& masterPort) {
    return smc.IOMasterPort(bootstrapPort, masterPort);
}

kern_return_t RecordingSmc::IOServiceGetMatchingServices(mach_port_t masterPort,
                                                         const MatchingDictionary& matching,
                                                         io_iterator_t& services) {
    calls_.push_back("IOServiceGetMatchingServices " + matching.className);
    return smc.IOServiceGetMatchingServices(masterPort, matching, services);
}

io_object_t RecordingSmc::IOIteratorNext(io_iterator_t iterator) { return smc.IOIteratorNext(iterator); }

kern_return_t RecordingSmc::IOObjectRelease(io_object_t object) { return smc.IOObjectRelease(object); }

kern_return_t RecordingSmc::IOServiceOpen(io_service_t service, task_port_t owningTask, std::uint32_t type,
                                          io_connect_t& connection) {
    calls_.emplace_back("IOServiceOpen");
    return smc.IOServiceOpen(service, owningTask, type, connection);
}

kern_return_t RecordingSmc::IOServiceClose(io_connect_t connection) {
    calls_.emplace_back("IOServiceClose");
    return smc.IOServiceClose(connection);
}

kern_return_t RecordingSmc::IOConnectCallStructMethod(io_connect_t connection, std::uint32_t selector,
                                                      const void* input, std::size_t inputSize, void* output,
                                                      std::size_t& outputSize) {
    if (connection == 0) return io_return::notOpen;
    const std::size_t before = smc.requests.size();
    const kern_return_t result =
        smc.IOConnectCallStructMethod(connection, selector, input, inputSize, output, outputSize);
    constexpr std::string_view readCommand = "5 ";
    if (smc.requests.size() > before && smc.requests.back().starts_with(readCommand))
        calls_.push_back("read " + smc.requests.back().substr(readCommand.size()));
    return result;
}

void RecordingWindows::center(WindowName window) { calls_.push_back(nameOf(window) + " center"); }

void RecordingWindows::orderFront(WindowName window) { calls_.push_back(nameOf(window) + " orderFront"); }

void RecordingWindows::makeKeyAndOrderFront(WindowName window) {
    calls_.push_back(nameOf(window) + " makeKeyAndOrderFront");
}

void RecordingWindows::setCanHide(WindowName window, bool canHide) {
    calls_.push_back(nameOf(window) + " setCanHide " + flag(canHide));
}

void RecordingWindows::setShouldCascadeWindows(WindowName window, bool shouldCascade) {
    calls_.push_back(nameOf(window) + " setShouldCascadeWindows " + flag(shouldCascade));
}

void RecordingWindows::setLevel(WindowName window, WindowLevel level) {
    calls_.push_back(nameOf(window) + " setLevel " +
                     (level == WindowLevel::modalPanel ? "modalPanel" : "normal"));
}

void RecordingControls::setIntValue(LimitLabel label, std::int32_t value) {
    constexpr std::array<const char*, 6> names{"specificAreaLowLabel",  "specificAreaMedLabel",
                                               "specificAreaHighLabel", "averageLowLabel",
                                               "averageMedLabel",       "averageHighLabel"};
    calls_.push_back(format("%@ setIntValue %d", names.at(static_cast<std::size_t>(label)), value));
}

void RecordingControls::setSelectedItemIdentifier(std::string_view identifier) {
    calls_.push_back("preferencesToolbar setSelectedItemIdentifier " + std::string(identifier));
}

void RecordingControls::selectTabViewItemAtIndex(std::int32_t index) {
    calls_.push_back(format("preferencesTabView selectTabViewItemAtIndex %d", index));
}

void RecordingControls::setStatusAboutMenuItemTitle(const std::string& title) {
    calls_.push_back("statusAboutMenuItem setTitle \"" + title + '"');
}

void RecordingControls::setQuitMenuItemKeyEquivalent(std::string_view key) {
    calls_.push_back("quitMenuItem setKeyEquivalent \"" + std::string(key) + '"');
}

bool RecordingGPUSwitcher::switcherOpen() {
    calls_.emplace_back("switcherOpen");
    return exists;
}

Observation RecordingGPUSwitcher::registerForGPUChangeNotifications(GPUChangeObserver& registered) {
    calls_.emplace_back("registerForGPUChangeNotifications");
    observer = &registered;
    return Observation([this] { observer = nullptr; });
}

bool RecordingGPUSwitcher::isUsingDiscreteGPU() {
    calls_.emplace_back("isUsingDiscreteGPU");
    return isDiscrete;
}

RecordingPlatform::RecordingPlatform() { sysCtl.set("hw.model", "Model1,2"); }

RecordingPlatform::~RecordingPlatform() = default;

Platform RecordingPlatform::platform() {
    return {.dispatch = dispatch,
            .ioKit = ioKit,
            .sensorProvider = nullptr,
            .sysCtl = sysCtl,
            .fileManager = fileManager,
            .fileHandles = fileHandles,
            .bundle = bundle,
            .processInfo = processInfo,
            .userDefaults = userDefaults,
            .processManager = processManager,
            .serviceManagement = serviceManagement,
            .statusBar = statusBar,
            .alertPanel = alertPanel,
            .workspace = workspace,
            .growl = growl,
            .systemLog = systemLog};
}

ApplicationPorts RecordingPlatform::ports() {
    const auto record = [this](const char* call) { return [this, call] { calls.emplace_back(call); }; };
    ApplicationPorts ports;
    ports.offerToMoveToApplicationsFolder = record("offerToMoveToApplicationsFolder");
    ports.setupVantixView = record("setupVantixView");
    ports.gpuSwitcher = &gpuSwitcher;
    return ports;
}

std::string RecordingPlatform::takeCalls() {
    std::string text;
    for (const std::string& call : std::exchange(calls, {})) text += call + '\n';
    return text;
}

}  // namespace calorivo::test
