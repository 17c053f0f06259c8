#pragma once

#include "app/UAAppReviewManager.h"
#include "support/RecordingPlatform.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace calorivo::test {

/// A program with a rating prompt, on virtual time; what is shown and opened is written down.
struct ReviewFixture {
    class Sheet final : public AlertSheet {
      public:
        explicit Sheet(Calls& calls) : calls_(calls) {}
        [[nodiscard]] bool hasKeyWindow() const override { return isThere; }
        void beginSheet(const Alert& alert, std::function<void(std::int32_t)> didEnd) override {
            calls_.push_back("sheet " + alert.message);
            alerts.push_back(alert);
            end = std::move(didEnd);
        }
        void endSheet() override { calls_.emplace_back("endSheet"); }

        bool isThere = false;
        std::vector<Alert> alerts;
        std::function<void(std::int32_t)> end;

      private:
        Calls& calls_;
    };

    class Network final : public Reachability {
      public:
        std::optional<std::uint32_t> flags = ReachabilityFlags::reachable;
        bool canConnect = true;
        std::vector<URLRequest> requests;
        [[nodiscard]] std::optional<std::uint32_t> flagsForAddress(const ZeroAddress& address) override {
            return address == ZeroAddress{16, 2} ? flags : std::nullopt;
        }
        [[nodiscard]] bool createConnection(const URLRequest& request) override {
            requests.push_back(request);
            return canConnect;
        }
    };

    ReviewFixture() {
        bundle.information["CFBundleVersion"] = "7";
        bundle.information["CFBundleDisplayName"] = "Calorivo";
        time.setWallTime(WallTime(std::chrono::hours(24 * 20'000)));
    }
    ~ReviewFixture() {
        time.run();
        queue.reset();
    }
    ReviewFixture(const ReviewFixture&) = delete;
    ReviewFixture& operator=(const ReviewFixture&) = delete;

    [[nodiscard]] ReviewParts parts() {
        return {defaults,     bundle, component, mainStrings, alertPanel,    sheet, workspace,
                reachability, log,    time,      *queue,      notifications, {}};
    }
    UAAppReviewManager& manager() {
        if (!manager_) manager_ = std::make_unique<UAAppReviewManager>(parts());
        return *manager_;
    }
    /// The next start of the program.
    UAAppReviewManager& restart(const std::string& version) {
        time.run();
        manager_.reset();
        bundle.information["CFBundleVersion"] = version;
        return manager();
    }
    void passDays(double days) {
        time.advance(std::chrono::duration_cast<std::chrono::nanoseconds>(
            std::chrono::duration<double>(days * 86400.0)));
    }
    void use() {
        manager();
        notifications.willBecomeActive.announce();
        time.run();
    }
    /// What was shown, opened and logged since the last time.
    Calls takeCalls() {
        time.run();
        std::erase_if(calls, [](const std::string& call) {
            return call.starts_with("objectForKey") || call.starts_with("objectForInfo") ||
                   call.starts_with("setObject") || call == "synchronize" ||
                   call.find("CFBundle") != std::string::npos;
        });
        return std::exchange(calls, {});
    }
    [[nodiscard]] Value stored(const std::string& name) const {
        const auto found = defaults.stored.find("UAAppReviewManagerKey" + name);
        return found != defaults.stored.end() ? found->second : Value();
    }
    void store(const std::string& name, const Value& value) {
        defaults.stored["UAAppReviewManagerKey" + name] = value;
    }
    /// Everything is as the standard settings want it.
    void meetConditions() {
        manager().setAppID("42");
        store("CurrentVersion", "7");
        store("FirstUseDate", secondsSince1970(time.wallTime()) - 30 * 86400.0);
        store("UseCount", 21);
    }

    Calls calls;
    VirtualDispatch time;
    std::unique_ptr<Queue> queue = time.makeSerialQueue("global");
    ApplicationNotifications notifications;
    RecordingUserDefaults defaults{calls};
    RecordingBundle bundle{calls};
    FakeFileManager files;
    StringsTables component{files, "/component", {"de"}};
    StringsTables mainStrings{files, "/main", {"de"}};
    RecordingAlertPanel alertPanel{calls};
    Sheet sheet{calls};
    RecordingWorkspace workspace{calls};
    Network reachability;
    RecordingSystemLog log{calls};

  private:
    std::unique_ptr<UAAppReviewManager> manager_;
};

}  // namespace calorivo::test
