#include "desktop/DesktopProgram.h"

#include "app/Explanation.h"
#include "desktop/Promotion.h"
#include "host/Drives.h"
#include "platform/AlertPanel.h"
#include "platform/Format.h"
#include "platform/linux/UserDirectories.h"
#include "smc/SmcClient.h"
#include "ui/qt/Appearance.h"
#include "ui/qt/TemplateIcon.h"

#include <QApplication>
#include <QStyle>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

namespace calorivo {

namespace {

/// So long a panel may take to come up beside us at login.
constexpr auto trayPatience = std::chrono::seconds(8);

/// The folder for documents, or the home folder of a user who has none.
std::string documentsFolder() {
    const std::string documents = userDirectories(processEnvironment).documents;
    std::error_code error;
    if (std::filesystem::is_directory(documents, error)) return documents;
    return processEnvironment("HOME").value_or("");
}

/// Where a program may come to the front by itself only with the desktop's leave, the toolkit finds it here.
void takeActivationToken(const QString& token) {
    if (!token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}

/// The desktop's own palette; ours where the desktop has none, and the toolkit's stands in.
QPalette desktopPalette() {
    const QPalette palette = QApplication::palette();
    return palette == QApplication::style()->standardPalette() ? lightPalette() : palette;
}

void complain(const std::string& message) { std::fprintf(stderr, "calorivo: %s\n", message.c_str()); }

}  // namespace

DesktopProgram::DesktopProgram(QApplication& application, const DesktopOptions& options,
                               const LinuxPaths& paths)
    : application_(application),
      options_(options),
      paths_(paths),
      desktopPalette_(desktopPalette()),
      system_(options, paths, statusBarResources()),
      portal_(QDBusConnection::sessionBus()),
      interface_(settings_, QStringLiteral(CALORIVO_VERSION)) {
    settings_.load(system_.store);
}

DesktopProgram::~DesktopProgram() {
    system_.dispatch.closeMainQueue();
    checkAfterSleep_.reset();
    delegate_.reset();
    smcSetIOKit(nullptr);
    smcSetOutput(nullptr);
}

std::string DesktopProgram::start() {
    if (std::string problem = system_.openSource(); !problem.empty()) return problem;
    followAppearance();
    makeDelegate();
    connectParts();
    smcSetOutput(stderr);
    delegate_->awakeFromNib();
    delegate_->applicationDidFinishLaunching();
    checkAfterSleep_.emplace(QDBusConnection::systemBus(), delegate_->checkCycle(), delegate_->keys());
    // Taking its place among the running applications activates a program.
    if (system_.processManager.isFrontProcess())
        system_.dispatch.mainQueue().async([this] { becomeActive(); });
    system_.dispatch.mainQueue().async([this] {
        tellOfProblems();
        if (options_.isShowingPreferences) delegate_->activateAndShowPreferences();
    });
    return {};
}

void DesktopProgram::makeDelegate() {
    Configuration configuration;
    configuration.documentDirectories = {documentsFolder()};
    configuration.modelTables = system_.modelTables(problems_);
    delegate_ = std::make_unique<PyroluxAppDelegate>(system_.platform(), interface_.interface(),
                                                     std::move(configuration), applicationPorts());
    SensorProvider& provider = system_.provider();
    const auto explained = [this, &provider](SensorKey key) {
        return explain(key, {delegate_->lists(), delegate_->naming(), delegate_->reader(), provider});
    };
    interface_.attach({.delegate = *delegate_,
                       .dispatch = system_.dispatch,
                       .provider = &provider,
                       .sourceDetail = options_.keysFile.value_or(""),
                       .explain = explained,
                       .explainDrive = [this](const std::string& serial) { return explainDrive(serial); }},
                      preferencesPorts());
    if (options_.isStartedAtLogin && system_.store.objectForKey("hideOnLaunch").boolValue())
        interface_.beginMinimised();
}

ApplicationPorts DesktopProgram::applicationPorts() {
    ApplicationPorts ports;
    ports.makeSmartController = [this] {
        auto drives = makeDrives(options_, driveReaderProgram());
        drives_ = drives.get();
        return drives;
    };
    // The sensors of the GPU are held at what was read last: that is not to be from before a sleep.
    const auto checkAtOnce = [this] {
        if (checkAfterSleep_) checkAfterSleep_->check();
    };
    graphics_ = makeGraphics(options_, system_.dispatch, system_.systemLog,
                             [this, checkAtOnce] { system_.dispatch.mainQueue().async(checkAtOnce); });
    if (graphics_) ports.gpuSwitcher = &graphics_->switcher();
    if (graphics_) ports.gpuNames = &graphics_->switcher();
    ports.offerToMoveToApplicationsFolder = offerToMove();
#ifdef CALORIVO_PROMOTION
    ports.setupVantixView = [this, promotion = std::shared_ptr<Promotion>()]() mutable {
        promotion =
            std::make_shared<Promotion>(PromotionParts{.preferences = delegate_->preferences(),
                                                       .keys = delegate_->keys(),
                                                       .workspace = system_.workspace,
                                                       .dispatch = system_.dispatch,
                                                       .terminate = [] { QCoreApplication::quit(); }},
                                        interface_, PromotionConfiguration{.texts = promotionTexts()});
    };
#endif
    return ports;
}

std::optional<DriveExplanation> DesktopProgram::explainDrive(const std::string& serial) const {
    if (drives_ == nullptr) return std::nullopt;
    for (const DriveDetails& drive : drives_->details())
        if (drive.isListed && drive.serial == trimmed(serial))
            return DriveExplanation{drive.device, drive.source, drive.isAsleep, drive.trouble};
    return std::nullopt;
}

std::function<void()> DesktopProgram::offerToMove() {
    std::optional<MovePlaces> places = movePlaces(processEnvironment, executablePath(), paths_.dataFolder);
    if (!places) return {};
    moveOffer_ = std::make_unique<MoveOffer>(
        MoveServices{.userDefaults = system_.store,
                     .log = system_.systemLog,
                     .fileManager = system_.fileManager,
                     .alertPanel = system_.alertPanel,
                     .activateIgnoringOtherApps = [this] { interface_.activateIgnoringOtherApps(); }},
        std::move(*places));
    return [this] {
        moveOffer_->offerToMove();
        // Told to end while it asked: nothing was started yet that would have to be taken down.
        if (hasTerminated_) std::_Exit(EXIT_SUCCESS);
    };
}

void DesktopProgram::connectParts() {
    QObject::connect(&interface_, &QtInterface::quitWanted, &application_, &QCoreApplication::quit);
    QObject::connect(&interface_, &QtInterface::savingExpected, &application_,
                     [this] { settings_.save(system_.store); });
    QObject::connect(&system_.statusBar, &QtStatusBar::activated, &application_,
                     [this](const QString& token) { showMainWindow(token); });
    QObject::connect(&system_.notifications, &DBusNotifications::clicked, &application_,
                     takeActivationToken);  // the window is shown by the controller, which is told next
    QObject::connect(&system_.notifications, &DBusNotifications::availabilityChanged, &application_,
                     [this] { interface_.refreshPorts(); });
    QObject::connect(&application_, &QGuiApplication::applicationStateChanged, &application_,
                     [this](Qt::ApplicationState state) {
                         if (state == Qt::ApplicationActive) becomeActive();
                     });
    const auto placeTitle = [this] {
        system_.statusBar.setTitlePlace(static_cast<TitlePlace>(settings_.titlePlace.get()));
    };
    observations_.push_back(settings_.titlePlace.observe(placeTitle));
    placeTitle();
}

void DesktopProgram::followAppearance() {
    QObject::connect(&portal_, &PortalSettings::isDarkChanged, &application_, [this] { applyAppearance(); });
    observations_.push_back(settings_.colorScheme.observe([this] { applyAppearance(); }));
    applyAppearance();
}

void DesktopProgram::applyAppearance() {
    const auto choice = static_cast<ColorScheme>(settings_.colorScheme.get());
    const QPalette palette = paletteFor(choice, desktopPalette_, portal_.isDark());
    if (palette != QApplication::palette()) QApplication::setPalette(palette);
}

void DesktopProgram::becomeActive() {
    if (!hasTerminated_) delegate_->applicationDidBecomeActive();
}

void DesktopProgram::showMainWindow(const QString& activationToken) {
    takeActivationToken(activationToken);
    delegate_->activateAndShowMainWindow();
}

void DesktopProgram::tellOfProblems() {
    const auto take = [this](const std::vector<std::string>& more) {
        problems_.insert(problems_.end(), more.begin(), more.end());
    };
    take(system_.bundle.problems());
    take(system_.provider().problems());
    for (const std::string& problem : problems_) complain(problem);

    const std::vector<std::string>& damages = system_.store.problems();
    if (!damages.empty()) {
        std::string text;
        for (const std::string& damage : damages) {
            complain(damage);
            text.append(text.empty() ? "" : "\n").append(damage);
        }
        system_.alertPanel.runModal(
            {.message =
                 QCoreApplication::translate("DesktopProgram", "Some of your preferences could not be read.")
                     .toStdString(),
             .defaultButton = "OK",
             .informativeText = text});
    }
    if (!delegate_->state().didLaunchInNormalMode)
        trayTimer_ =
            system_.dispatch.scheduleTimer(trayPatience, Repeats::no, [this] { tellHowItIsReached(); });
}

void DesktopProgram::tellHowItIsReached() {
    if (system_.statusBar.hasHost()) return;
    complain("running in the background, but there is no tray: start it again to open its window");
}

void DesktopProgram::keepSettings() {
    interface_.saveLayout();
    settings_.save(system_.store);
}

void DesktopProgram::save() {
    if (hasTerminated_ || isStartingUp()) return;
    keepSettings();
    delegate_->preferencesController().savePreferences();
}

void DesktopProgram::terminate() {
    if (std::exchange(hasTerminated_, true) || isStartingUp()) return;
    keepSettings();
    delegate_->applicationWillTerminate();
}

bool DesktopProgram::isStartingUp() const { return delegate_->state().isStartingUp; }

StatusBarResources DesktopProgram::statusBarResources() const {
    return {.menu = [this](std::string_view name) { return interface_.menuNamed(name); },
            .icon =
                [](const std::string& name, bool isTemplate) {
                    return isTemplate ? templateIcon(QString::fromStdString(name)) : applicationIcon();
                },
            .iconThemePath =
                paths_.dataFolder.empty() ? QString() : QString::fromStdString(paths_.dataFolder + "/icons"),
            .iconName = QStringLiteral("calorivo-symbolic"),
            .blankIconName = QStringLiteral("calorivo-blank")};
}

PreferencesPorts DesktopProgram::preferencesPorts() {
    PreferencesPorts ports;
    ports.sendTestNotification = [this] { system_.notifications.sendTest(); };
    ports.notificationServiceProblem = [this]() -> std::string {
        if (system_.notifications.respondsToNotify()) return {};
        return QCoreApplication::translate("DesktopProgram",
                                           "No notification service answers on this desktop.")
            .toStdString();
    };
    ports.openLog = [this] { delegate_->logger().openLogFile(); };
    ports.revealLog = [this] { delegate_->logger().revealLogFileInFinder(); };
    // A dump and the simulation have none.
    ports.canCheckDrives = [this] { return !options_.keysFile && !options_.simulationSeed; };
    return ports;
}

}  // namespace calorivo
