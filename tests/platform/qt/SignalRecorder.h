#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantList>

#include <string>
#include <utility>
#include <vector>

namespace calorivo {

/// Writes down the signals that an object of the message bus sends, as another program sees them.
class SignalRecorder : public QObject {
    Q_OBJECT

  public:
    /// An empty service stands for all of them.
    SignalRecorder(QDBusConnection connection, const QString& service, const QString& path,
                   const QString& interface) {
        connection.connect(service, path, interface, QString(), this, SLOT(record(QDBusMessage)));
    }

    /// The names since the last call, in order.
    std::vector<std::string> takeNames() {
        std::vector<std::string> names;
        for (const QDBusMessage& message : std::exchange(messages_, {}))
            names.push_back(message.member().toStdString());
        return names;
    }
    std::vector<QDBusMessage> take() { return std::exchange(messages_, {}); }

  private Q_SLOTS:
    void record(const QDBusMessage& message) { messages_.push_back(message); }

  private:
    std::vector<QDBusMessage> messages_;
};

}  // namespace calorivo
