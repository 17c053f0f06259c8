#pragma once

#include "app/MemoryFiles.h"
#include "app/MoveToApplicationsFolder.h"
#include "support/RecordingPlatform.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace calorivo::test {

/// The Applications folders' world around a program in a downloads folder; every call is written down.
struct MoveFixture {
    class Question final : public SuppressibleAlertPanel {
      public:
        explicit Question(Calls& calls) : calls_(calls) {}
        SuppressibleAlertAnswer runModal(const SuppressibleAlert& alert) override {
            calls_.push_back("ask " + alert.message);
            asked.push_back(alert);
            return answer;
        }
        std::vector<SuppressibleAlert> asked;
        SuppressibleAlertAnswer answer{.isFirstButton = true, .isSuppressionOn = true};

      private:
        Calls& calls_;
    };

    class Rights final : public Authorization {
      public:
        explicit Rights(Calls& calls) : calls_(calls) {}
        OSStatus creation = errAuthorizationSuccess;
        OSStatus copying = errAuthorizationSuccess;
        bool hasExecute = true;
        std::deque<PrivilegedResult> results;

        [[nodiscard]] OSStatus AuthorizationCreate() override {
            calls_.emplace_back("AuthorizationCreate");
            return creation;
        }
        [[nodiscard]] OSStatus AuthorizationCopyRights(std::string_view right, std::uint32_t flags) override {
            calls_.push_back("AuthorizationCopyRights " + std::string(right) + " " + std::to_string(flags));
            return copying;
        }
        [[nodiscard]] ExecuteWithPrivileges findExecuteWithPrivileges() override {
            calls_.emplace_back("findExecuteWithPrivileges");
            if (!hasExecute) return {};
            return [this](const std::string& tool, const std::vector<std::string>& arguments) {
                std::string call = "execute " + tool;
                for (const std::string& argument : arguments) call += " [" + argument + "]";
                calls_.push_back(call);
                if (results.empty()) return PrivilegedResult{errAuthorizationSuccess, true, 0};
                const PrivilegedResult result = results.front();
                results.pop_front();
                return result;
            };
        }
        void AuthorizationFree() override { calls_.emplace_back("AuthorizationFree"); }

      private:
        Calls& calls_;
    };

    class Processes final : public Relaunch {
      public:
        explicit Processes(Calls& calls) : calls_(calls) {}
        std::vector<std::string> running;
        bool isFoundByShell = false;

        [[nodiscard]] std::int32_t processIdentifier() const override { return 4711; }
        [[nodiscard]] bool isRunning(const RunningSearch& search) override {
            calls_.push_back("sh -c " + search.shellCommand);
            return isFoundByShell;
        }
        [[nodiscard]] std::vector<std::string> runningApplicationExecutablePaths() override {
            calls_.emplace_back("runningApplications");
            return running;
        }
        void open(const std::string& path) override { calls_.push_back("open " + path); }
        void openAfterExit(const OpenAfterExit& request) override {
            calls_.push_back("sh -c " + request.shellCommand);
        }
        void detachLater(const DetachLater& request) override {
            calls_.push_back("sh -c " + request.shellCommand);
        }
        void exit(std::int32_t status) override { calls_.push_back("exit " + std::to_string(status)); }

      private:
        Calls& calls_;
    };

    MoveFixture() {
        configuration.bundlePath = "/Users/u/Downloads/Calorivo.app";
        configuration.appKitVersion = 1038.0;
        searchPath.folders[{SearchPathDirectory::allApplications, SearchPathDomainMask::all}] = {
            "/Users/u/Applications", "/Applications", "/Network/Applications"};
        searchPath.folders[{SearchPathDirectory::applications, SearchPathDomainMask::user}] = {
            "/Users/u/Applications"};
        searchPath.folders[{SearchPathDirectory::applications, SearchPathDomainMask::local}] = {
            "/Applications"};
        searchPath.folders[{SearchPathDirectory::downloads, SearchPathDomainMask::all}] = {
            "/Users/u/Downloads"};
        files.folders["/Applications"] = {"Other.app"};
        files.existing.insert(configuration.bundlePath);
        links.folder("/Applications").folder("/Users").folder("/Users/u").folder("/Users/u/Applications");
    }

    /// What the offer did, without the reading of the suppression.
    Calls offer() {
        if (!move) move = std::make_unique<MoveToApplicationsFolder>(parts(), configuration);
        calls.clear();
        move->offerToMove();
        std::erase(calls, "objectForKey moveToApplicationsFolderAlertSuppress");
        return std::exchange(calls, {});
    }

    [[nodiscard]] MoveParts parts() {
        return {userDefaults,
                log,
                strings,
                question,
                alertPanel,
                searchPath,
                links,
                files,
                authorization,
                relaunch,
                [this] { return isActive; },
                [this] { calls.emplace_back("activate"); }};
    }

    Calls calls;
    RecordingUserDefaults userDefaults{calls};
    RecordingSystemLog log{calls};
    FakeFileManager fileManager;
    StringsTables strings{fileManager, "/strings", {"de"}};
    Question question{calls};
    RecordingAlertPanel alertPanel{calls};
    FixedSearchPath searchPath;
    MemoryLinks links;
    MemoryOperations files{calls};
    Rights authorization{calls};
    Processes relaunch{calls};
    bool isActive = true;
    MoveConfiguration configuration;
    std::unique_ptr<MoveToApplicationsFolder> move;
};

}  // namespace calorivo::test
