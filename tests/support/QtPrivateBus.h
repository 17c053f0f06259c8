#pragma once

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/prctl.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QVariantList>

#include <chrono>

namespace calorivo {

/// A message bus of the test's own, in a folder of its own: nobody else is on it, and no service starts by
/// itself. Main thread. The bus ends with this object, and with the test program however that ends.
class PrivateBus {
  public:
    PrivateBus() {
        static int buses = 0;
        prefix_ = QStringLiteral("private-bus-%1-").arg(++buses);
        start();
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus() {
        for (const QString& name : names_) QDBusConnection::disconnectFromBus(name);
        stop();
    }

    /// Empty when the bus could not be started, which is a failure of the test already.
    [[nodiscard]] QString address() const { return address_; }

    /// A connection of this name, made on the first call; the names of two buses do not meet.
    [[nodiscard]] QDBusConnection connect(const QString& name) {
        const QString fullName = prefix_ + name;
        if (names_.contains(fullName)) return QDBusConnection(fullName);
        names_.append(fullName);
        return QDBusConnection::connectToBus(address_, fullName);
    }
    /// Closes the connection of this name: what it owned on the bus goes. Copies keep it open.
    void disconnect(const QString& name) {
        names_.removeAll(prefix_ + name);
        QDBusConnection::disconnectFromBus(prefix_ + name);
    }

    /// Ends the bus under its clients.
    void stop() {
        daemon_.kill();
        daemon_.waitForFinished();
    }

  private:
    void start() {
        QFile file(folder_.filePath(QStringLiteral("bus.conf")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(configuration().toUtf8());
        file.close();
        daemon_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        daemon_.start(QStringLiteral("dbus-daemon"),
                      {QStringLiteral("--config-file=") + file.fileName(), QStringLiteral("--nofork"),
                       QStringLiteral("--nopidfile"), QStringLiteral("--print-address=1")});
        while (daemon_.state() != QProcess::NotRunning && !daemon_.canReadLine())
            if (!daemon_.waitForReadyRead()) break;
        address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
        ASSERT_FALSE(address_.isEmpty()) << "dbus-daemon: " << daemon_.errorString().toStdString()
                                         << daemon_.readAllStandardError().data();
    }
    [[nodiscard]] QString configuration() const {
        return QStringLiteral(
                   "<!DOCTYPE busconfig PUBLIC '-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN'\n"
                   " 'http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd'>\n"
                   "<busconfig><type>session</type><listen>unix:path=%1/bus</listen><auth>EXTERNAL</auth>\n"
                   "<policy context='default'><allow send_destination='*' eavesdrop='true'/>\n"
                   "<allow eavesdrop='true'/><allow own='*'/></policy></busconfig>\n")
            .arg(folder_.path());
    }

    QTemporaryDir folder_;
    QProcess daemon_;
    QString prefix_;
    QString address_;
    QStringList names_;
};

/// Calls and waits for the answer or the error while the event loop runs, so that objects of the test's own
/// thread can answer.
inline QDBusMessage ask(const QDBusConnection& connection, const QDBusMessage& call) {
    constexpr std::chrono::seconds patience{10};
    QEventLoop loop;
    const QDBusPendingCallWatcher pending(connection.asyncCall(call));
    QObject::connect(&pending, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(patience, &loop, &QEventLoop::quit);
    if (!pending.isFinished()) loop.exec();
    EXPECT_TRUE(pending.isFinished()) << "no answer to " << call.member().toStdString();
    return pending.reply();
}

inline QDBusMessage ask(const QDBusConnection& connection, const QString& service, const QString& path,
                        const QString& interface, const QString& method, const QVariantList& arguments = {}) {
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, method);
    call.setArguments(arguments);
    return ask(connection, call);
}

/// Lets what is under way between the connections of the bus and this thread arrive, and what that sets
/// going: far more round trips than any conversation of a test has.
inline void settle(const QDBusConnection& connection) {
    constexpr int rounds = 20;
    for (int round = 0; round < rounds; ++round) {
        ask(connection, QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
        QCoreApplication::processEvents();
    }
}

}  // namespace calorivo
