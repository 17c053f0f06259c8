#include "desktop/DesktopProgram.h"
#include "platform/linux/DriveReaderProcess.h"
#include "platform/qt/Instance.h"
#include "platform/qt/SessionEnd.h"
#include "ui/qt/TemplateIcon.h"
#include "ui/qt/Translations.h"

#include <QApplication>
#include <QLocale>

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace calorivo {

namespace {

enum ExitCode : int { exitEnded = 0, exitFailed = 1, exitWrongUse = 2 };

int complain(const std::string& message, ExitCode code) {
    std::fprintf(stderr, "calorivo: %s\n", message.c_str());
    return code;
}

bool hasScreen() {
    for (const char* const name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        if (!qEnvironmentVariableIsEmpty(name)) return true;
    return false;
}

/// The arguments after the program's name.
std::vector<std::string> argumentsOf(int argc, char** argv) {
    return argc < 1 ? std::vector<std::string>() : std::vector<std::string>(argv + 1, argv + argc);
}

int runWithScreen(QApplication& application, const DesktopOptions& options) {
    QApplication::setApplicationName(QStringLiteral("calorivo"));
    QApplication::setApplicationDisplayName(QStringLiteral("Calorivo"));
    QApplication::setApplicationVersion(QStringLiteral(CALORIVO_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("calorivo"));
    QApplication::setQuitOnLastWindowClosed(false);

    Instance instance({.name = QStringLiteral("org.example.Calorivo"),
                       .bus = QDBusConnection::sessionBus(),
                       .runtimeFolder = qEnvironmentVariable("XDG_RUNTIME_DIR")});
    switch (instance.start()) {
        case Instance::Role::first:
            break;
        case Instance::Role::second:
            return exitEnded;
        case Instance::Role::unanswered:
            return complain(instance.problem(), exitFailed);
    }
    installTranslations(application, QLocale::system());
    QApplication::setWindowIcon(applicationIcon());

    const LinuxPaths paths = linuxPaths(processEnvironment, executablePath());
    DesktopProgram program(application, options, paths);
    if (const std::string problem = program.start(); !problem.empty()) return complain(problem, exitFailed);
    QObject::connect(&instance, &Instance::activateRequested, &application,
                     [&program](const QString& token) { program.showMainWindow(token); });
    const SessionEnd end([&program](EndReason reason) {
        // Another program may call a logout off. When it goes on, the loop is told to end.
        if (reason == EndReason::logout)
            program.save();
        else
            program.terminate();
        if (reason == EndReason::signal) QCoreApplication::quit();
    });
    const int code = QApplication::exec();
    program.terminate();
    // Nothing else is taken down: a sensor or a drive that does not answer must not hold the program's end.
    std::fflush(nullptr);
    std::_Exit(code);
}

int run(int argc, char** argv) {
    // Help needs no screen; anything else may still be an option of the toolkit.
    if (const ParsedDesktopOptions asked = parseDesktopOptions(argumentsOf(argc, argv));
        !asked.text.empty()) {
        std::fputs(asked.text.c_str(), stdout);
        return exitEnded;
    }
    if (!hasScreen())
        return complain("no desktop to show a window on; calorivo-cli runs in a terminal", exitFailed);
    QApplication application(argc, argv);
    const ParsedDesktopOptions parsed = parseDesktopOptions(argumentsOf(argc, argv));
    if (!parsed.problem.empty()) return complain(parsed.problem, exitWrongUse);
    return runWithScreen(application, parsed.options);
}

}  // namespace

}  // namespace calorivo

int main(int argc, char** argv) {
    if (const auto code = calorivo::runAsDriveReader(argc, argv)) return *code;
    try {
        return calorivo::run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "calorivo: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
