#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include <functional>
#include <memory>
#include <string>

namespace calorivo {

class InstanceSocket;

/// Where an instance looks for others.
struct InstancePlaces {
    /// The well-known name of the program, "org.example.Program": the object's path follows from it.
    QString name;
    /// The session's bus; may be closed.
    QDBusConnection bus;
    /// A folder of the user for this session, used without a bus; may be empty: then every instance is the
    /// first one.
    QString runtimeFolder;
    /// For how long the first instance may be silent.
    int patienceMilliseconds = 2000;
};

/// The one running instance of the program in a session. The first one to start owns a name on the session's
/// bus, where desktops can activate it as well; without a bus, a locked file and a socket in the runtime
/// folder. Both go with the process, however it ends. Main thread.
class Instance final : public QObject {
    Q_OBJECT

  public:
    enum class Role {
        /// This one runs; it hears of later ones by activateRequested().
        first,
        /// Another one runs and has shown itself: this one is done.
        second,
        /// Another one runs and does not answer: problem() says so.
        unanswered,
    };

    explicit Instance(InstancePlaces places, QObject* parent = nullptr);
    /// Gives the place of the first one up.
    ~Instance() override;

    /// Finds out which one this is, once. A second one passes on the activation token that `environment`
    /// holds and waits for the first one's answer.
    [[nodiscard]] Role start(const std::function<QByteArray(const char* name)>& environment = &qgetenv);

    /// For the user; empty unless the first instance does not answer.
    [[nodiscard]] std::string problem() const;

  Q_SIGNALS:
    /// Somebody started the program again: its window is to come to the front, by this token, which is empty
    /// when the desktop gave none.
    void activateRequested(const QString& activationToken);

  private:
    [[nodiscard]] Role startOnBus(const QString& startupId, const QString& token);
    [[nodiscard]] Role activateOnBus(const QString& startupId, const QString& token) const;
    [[nodiscard]] Role startOnSocket(const QString& token);
    void answerCalls();
    [[nodiscard]] QString objectPath() const;

    InstancePlaces places_;
    std::unique_ptr<InstanceSocket> socket_;
    std::unique_ptr<QSocketNotifier> notifier_;
    Role role_ = Role::first;
    bool ownsName_ = false;
};

}  // namespace calorivo
