#include "platform/qt/QtWorkspace.h"

#include "platform/FileURL.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QProcess>
#include <QStringList>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace calorivo {

namespace {

constexpr int fileViewerPatienceMilliseconds = 5000;
constexpr std::string_view fileScheme = "file://";

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isInScheme(char c) { return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.'; }

/// An opener would take other texts for options or for files of its folder.
bool hasScheme(std::string_view url) {
    const std::size_t colon = url.find(':');
    return colon != std::string_view::npos && colon > 0 && isLetter(url.front()) &&
           std::all_of(url.begin(), url.begin() + static_cast<std::ptrdiff_t>(colon), isInScheme) &&
           url.find('\0') == std::string_view::npos;
}

}  // namespace

QtWorkspace::QtWorkspace(QDBusConnection bus, QString opener)
    : bus_(std::move(bus)), opener_(std::move(opener)) {}

bool QtWorkspace::openURL(std::string_view url) {
    return hasScheme(url) && start(QByteArray(url.data(), static_cast<qsizetype>(url.size())));
}

bool QtWorkspace::openFile(std::string_view fullPath) {
    std::error_code error;
    if (!fullPath.starts_with('/') || !std::filesystem::exists(std::string(fullPath), error)) return false;
    return start(QByteArray::fromStdString(fileURLWithPath(fullPath)));
}

bool QtWorkspace::start(const QByteArray& address) {
    QProcess process;
    process.setProgram(opener_);
    process.setArguments({QString::fromUtf8(address)});
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    const bool isStarted = process.startDetached();
    // A token is good for one activation: the next program must not be given a stale one.
    for (const char* const token : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"})
        if (isStarted) qunsetenv(token);
    return isStarted;
}

void QtWorkspace::activateFileViewerSelectingURLs(const std::vector<std::string>& urls) {
    QStringList addresses;
    for (const std::string& url : urls)
        if (url.starts_with(fileScheme)) addresses.append(QString::fromStdString(url));
    if (addresses.isEmpty()) return;
    const std::string folder = URLByDeletingLastPathComponent(addresses.front().toStdString());
    // Without a bus a call has no answer, not even an error.
    if (!bus_.isConnected()) {
        start(QByteArray::fromStdString(folder));
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << addresses << qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    auto* const watcher =
        new QDBusPendingCallWatcher(bus_.asyncCall(call, fileViewerPatienceMilliseconds), &answers_);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &answers_, [this, watcher, folder] {
        watcher->deleteLater();
        if (watcher->isError()) start(QByteArray::fromStdString(folder));
    });
}

}  // namespace calorivo
