// Alerts over the session bus without the rest of the program, for tests/e2e/notifications: takes commands
// from standard input, one a line, and prints what happens.
//
//   area CELSIUS NAME    a sensor above its limit
//   average CELSIUS      the average above its limit
//   sticky 0|1           whether notifications stay
//   test                 the notification that shows that notifications work

#include "monitor/TemperatureReader.h"
#include "output/OverLimitAlerts.h"
#include "platform/qt/DBusNotifications.h"
#include "platform/qt/QtDispatch.h"
#include "platform/std/ThreadQueue.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QObject>
#include <QSocketNotifier>

#include <array>
#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

namespace calorivo {
namespace {

void tell(std::string_view event) {
    std::printf("%.*s\n", static_cast<int>(event.size()), event.data());
    std::fflush(stdout);
}

struct PrintingSystemLog final : SystemLog {
    void log(std::string_view line) override { tell("log " + std::string(line)); }
};

struct Program {
    Program() {
        QObject::connect(&notifications, &DBusNotifications::availabilityChanged,
                         [](bool isAvailable) { tell(isAvailable ? "available" : "not available"); });
        QObject::connect(&notifications, &DBusNotifications::clicked,
                         [](const QString& token) { tell("clicked " + token.toStdString()); });
        alerts.initGrowl();
        tell("ready");
    }
    void obey(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        double number = 0;
        words >> command;
        if (command == "test") return notifications.sendTest();
        words >> number >> std::ws;
        std::string name;
        std::getline(words, name);
        if (command == "area") alerts.showAlertForOverlimitAreaWithName(number, name);
        if (command == "average") alerts.showAlertForOverlimitAverage(number);
        if (command == "sticky") preferences.useStickyAlerts = number != 0;
    }

    QtDispatch dispatch{[](std::string label) { return std::make_unique<ThreadQueue>(std::move(label)); }};
    SensorLists lists;
    Preferences preferences;
    GPUState gpu;
    TemperatureReader reader{lists, preferences, gpu};
    PrintingSystemLog systemLog;
    DBusNotifications notifications;
    OverLimitAlerts alerts{
        {dispatch, preferences, reader, notifications, systemLog, [] { tell("activated"); }}};
};

}  // namespace
}  // namespace calorivo

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    calorivo::Program program;
    std::string input;
    QSocketNotifier stdinNotifier(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&stdinNotifier, &QSocketNotifier::activated, [&] {
        std::array<char, 4096> bytes{};
        const ssize_t count = read(STDIN_FILENO, bytes.data(), bytes.size());
        if (count <= 0) return QCoreApplication::quit();
        input.append(bytes.data(), static_cast<std::size_t>(count));
        for (std::size_t end = input.find('\n'); end != std::string::npos; end = input.find('\n')) {
            program.obey(input.substr(0, end));
            input.erase(0, end + 1);
        }
    });
    return QCoreApplication::exec();
}
