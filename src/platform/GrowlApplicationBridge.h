#pragma once

#include <functional>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace calorivo {

/// What an application tells of itself and of the kinds of its notifications: texts, lists of texts, and
/// dictionaries of texts under text keys.
using GrowlDictionary =
    std::map<std::string,
             std::variant<std::string, std::vector<std::string>, std::map<std::string, std::string>>>;

/// The application, as the notification service sees it. Main thread.
class GrowlApplicationBridgeDelegate {
  public:
    GrowlApplicationBridgeDelegate() = default;
    GrowlApplicationBridgeDelegate(const GrowlApplicationBridgeDelegate&) = delete;
    GrowlApplicationBridgeDelegate& operator=(const GrowlApplicationBridgeDelegate&) = delete;
    virtual ~GrowlApplicationBridgeDelegate() = default;

    [[nodiscard]] virtual GrowlDictionary registrationDictionaryForGrowl() const = 0;
    /// The context is that of the notification.
    virtual void growlNotificationWasClicked(const std::string& clickContext) = 0;
};

/// One notification. Texts are plain: nothing in them is markup.
struct GrowlNotification {
    std::string title = {};
    std::string description = {};
    /// One of the kinds in the registration.
    std::string notificationName = {};
    /// None if empty.
    std::string iconData = {};
    int priority = 0;
    /// It stays until the user closes it.
    bool isSticky = false;
    std::string clickContext = {};
    /// None if empty.
    std::string identifier = {};

    friend bool operator==(const GrowlNotification&, const GrowlNotification&) = default;
};

/// The service that shows notifications, where there is one. Nothing here waits for it. Main thread.
class GrowlApplicationBridge {
  public:
    /// Called with the service's name and version.
    using Loaded = std::function<void(const std::string& name, const std::string& version)>;

    GrowlApplicationBridge() = default;
    GrowlApplicationBridge(const GrowlApplicationBridge&) = delete;
    GrowlApplicationBridge& operator=(const GrowlApplicationBridge&) = delete;
    virtual ~GrowlApplicationBridge() = default;

    /// Looks for the service and calls `loaded` when there is one: at once, later, or never, and again when
    /// another takes its place. An empty function ends that.
    virtual void load(Loaded loaded) = 0;
    /// Null for none. It must outlive the bridge or be taken back.
    virtual void setGrowlDelegate(GrowlApplicationBridgeDelegate* delegate) = 0;
    /// Whether a notification can be handed to the service now.
    [[nodiscard]] virtual bool respondsToNotify() const = 0;
    virtual void notify(const GrowlNotification& notification) = 0;
};

}  // namespace calorivo
