#include "desktop/DesktopSystem.h"

#include "host/ModelTableChoice.h"
#include "host/Provider.h"
#include "platform/std/ThreadQueue.h"
#include "sensors/SensorDiscovery.h"

#include <utility>

namespace calorivo {

namespace {

SystemLogTargets systemLogTargets() {
    SystemLogTargets targets;
    targets.journalStream = processEnvironment("JOURNAL_STREAM").value_or("");
    return targets;
}

/// No file without a folder of the user's own.
std::string storePath(const LinuxPaths& paths) {
    return paths.userFolder.empty() ? std::string() : paths.userFolder + "/calorivo.ini";
}

}  // namespace

DesktopSystem::DesktopSystem(const DesktopOptions& options, LinuxPaths paths,
                             StatusBarResources statusBarResources)
    : systemLog(systemLogTargets()),
      store(storePath(paths), systemLog),
      dispatch([](std::string label) { return std::make_unique<ThreadQueue>(std::move(label)); }),
      notifications(QDBusConnection::sessionBus()),
      statusBar(QDBusConnection::sessionBus(), std::move(statusBarResources)),
      workspace(QDBusConnection::sessionBus()),
      bundle(paths.dataFolder, CALORIVO_VERSION, CALORIVO_VERSION),
      options_(options),
      paths_(std::move(paths)),
      processInfo_(processArguments(options)),
      loginItem_(loginItemPlaces(processEnvironment, executablePath())) {}

std::string DesktopSystem::openSource() {
    if (options_.keysFile)
        if (std::string problem = keysInput_.load(*options_.keysFile); !problem.empty()) return problem;
    if (options_.sys)
        if (const std::string problem = folderProblem(*options_.sys); !problem.empty())
            return *options_.sys + ": " + problem;
    provider_ = makeProvider(options_, keysInput_.text(), paths_, dispatch);
    sysCtl_ = std::make_unique<ProviderSysCtl>(*provider_);
    return {};
}

std::vector<ModelTable> DesktopSystem::modelTables(std::vector<std::string>& problems) {
    const auto model = modelNameFor(processInfo_.arguments(), *sysCtl_);
    if (!model && !options_.modelTables) return {};
    ModelTableChoice choice = modelTablesFor(model.value_or(""), options_, paths_);
    std::move(choice.problems.begin(), choice.problems.end(), std::back_inserter(problems));
    return std::move(choice.tables);
}

Platform DesktopSystem::platform() {
    return {.dispatch = dispatch,
            .ioKit = *provider_,
            // The provider's own names are this machine's: for another model the rules speak.
            .sensorProvider = options_.customModel ? nullptr : provider_.get(),
            .sysCtl = *sysCtl_,
            .fileManager = keysInput_,
            .fileHandles = fileHandles_,
            .bundle = bundle,
            .processInfo = processInfo_,
            .userDefaults = store,
            .processManager = processManager,
            .serviceManagement = loginItem_,
            .statusBar = statusBar,
            .alertPanel = alertPanel,
            .workspace = workspace,
            .growl = notifications,
            .systemLog = systemLog};
}

}  // namespace calorivo
