#include "platform/qt/QtWorkspace.h"

#include "platform/FileURL.h"
#include "platform/linux/TemporaryFolder.h"
#include "support/QtPrivateBus.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusMessage>
#include <QStringList>
#include <QTest>

#include <filesystem>
#include <string>
#include <vector>

namespace calorivo {

/// The desktop's program for folders: writes down what it is to show.
class FakeFileManager1 final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

  public:
    QStringList shown;
    QString startupId;

  public Q_SLOTS:
    void ShowItems(const QStringList& uris, const QString& id) {
        shown = uris;
        startupId = id;
    }
};

namespace {

/// No bus at all.
QDBusConnection noBus() { return QDBusConnection(QStringLiteral("there is no such bus")); }

/// A folder with an opener that writes down, in the file "opened", each of its arguments on a line.
struct Desk {
    Desk() {
        const std::string script = folder.write(
            "opener", "#!/bin/sh\nprintf '%s\\n' \"$#\" \"$@\" \"token $XDG_ACTIVATION_TOKEN\" > '" +
                          folder.path("opened.new") + "'\nmv '" + folder.path("opened.new") + "' '" +
                          folder.path("opened") + "'\n");
        std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    }
    [[nodiscard]] QtWorkspace workspace(const QDBusConnection& bus = noBus()) const {
        return QtWorkspace(bus, QString::fromStdString(folder.path("opener")));
    }
    /// What the opener was given, once it was; empty when it was not started.
    [[nodiscard]] std::string opened() const {
        const bool isThere =
            QTest::qWaitFor([this] { return std::filesystem::exists(folder.path("opened")); });
        return isThere ? folder.read("opened") : std::string();
    }
    TemporaryFolder folder;
};

TEST(QtWorkspace, HandsAddressesToTheOpenerAsTheyStand) {
    for (const std::string& url :
         {std::string("https://example.org/a?b=c&d=%20#e"), std::string("mailto:a@b?subject=x%0Ay"),
          std::string("store://example.org/artist"), std::string("x:$(touch /tmp/no);`id` 'a' \"b\" \\ *")}) {
        const Desk desk;
        EXPECT_TRUE(desk.workspace().openURL(url));
        EXPECT_EQ(desk.opened(), "1\n" + url + "\ntoken \n");
    }
}

TEST(QtWorkspace, OpensNothingThatIsNoAddress) {
    using namespace std::string_view_literals;
    const Desk desk;
    for (const std::string_view text :
         {""sv, "--help"sv, "file"sv, ":x"sv, "/etc/passwd"sv, "-x:y"sv, "1a:b"sv, "a b:c"sv, "http:\0x"sv})
        EXPECT_FALSE(desk.workspace().openURL(text)) << text;
    EXPECT_FALSE(std::filesystem::exists(desk.folder.path("opened")));
}

TEST(QtWorkspace, SaysThatNothingCouldBeStarted) {
    QtWorkspace workspace(noBus(), QStringLiteral("/nowhere/opener"));
    EXPECT_FALSE(workspace.openURL("https://example.org"));
    EXPECT_FALSE(workspace.openFile("/"));
}

TEST(QtWorkspace, PassesTheActivationTokenOnOnce) {
    const Desk desk;
    qputenv("XDG_ACTIVATION_TOKEN", "token-7");
    EXPECT_TRUE(desk.workspace().openURL("a:b"));
    EXPECT_EQ(desk.opened(), "1\na:b\ntoken token-7\n");
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}

TEST(QtWorkspace, OpensFilesByTheirAddresses) {
    const Desk desk;
    const std::string path = desk.folder.write("50% of #1?\xFF.csv", "");
    EXPECT_TRUE(desk.workspace().openFile(path));
    EXPECT_EQ(desk.opened(), "1\nfile://" + desk.folder.path("50%25%20of%20%231%3F%FF.csv") + "\ntoken \n");
    EXPECT_FALSE(desk.workspace().openFile(desk.folder.path("absent")));
    EXPECT_FALSE(desk.workspace().openFile("relative"));
    EXPECT_FALSE(desk.workspace().openFile(""));
}

TEST(QtWorkspace, ShowsFilesInTheProgramForFolders) {
    PrivateBus bus;
    FakeFileManager1 manager;
    QDBusConnection server = bus.connect(QStringLiteral("server"));
    ASSERT_TRUE(server.registerObject(QStringLiteral("/org/freedesktop/FileManager1"), &manager,
                                      QDBusConnection::ExportAllSlots));
    ASSERT_TRUE(server.registerService(QStringLiteral("org.freedesktop.FileManager1")));
    const Desk desk;
    QtWorkspace workspace = desk.workspace(bus.connect(QStringLiteral("client")));
    workspace.activateFileViewerSelectingURLs(
        {fileURLWithPath("/a b/c"), "https://example.org", fileURLWithPath("/d")});
    EXPECT_TRUE(QTest::qWaitFor([&manager] { return !manager.shown.isEmpty(); }));
    EXPECT_EQ(manager.shown, (QStringList{QStringLiteral("file:///a%20b/c"), QStringLiteral("file:///d")}));
    QCoreApplication::processEvents();
    EXPECT_FALSE(std::filesystem::exists(desk.folder.path("opened")));
}

TEST(QtWorkspace, OpensTheFolderWhereNoProgramShowsFiles) {
    PrivateBus bus;
    for (const QDBusConnection& connection : {noBus(), bus.connect(QStringLiteral("client"))}) {
        const Desk desk;
        QtWorkspace workspace = desk.workspace(connection);
        workspace.activateFileViewerSelectingURLs({fileURLWithPath("/a b/c"), fileURLWithPath("/d/e")});
        EXPECT_EQ(desk.opened(), "1\nfile:///a%20b/\ntoken \n");
    }
    const Desk desk;
    QtWorkspace workspace = desk.workspace(noBus());
    workspace.activateFileViewerSelectingURLs({fileURLWithPath("/d")});
    EXPECT_EQ(desk.opened(), "1\nfile:///\ntoken \n");
}

TEST(QtWorkspace, ShowsNothingForNoFiles) {
    const Desk desk;
    QtWorkspace workspace = desk.workspace(noBus());
    workspace.activateFileViewerSelectingURLs({});
    workspace.activateFileViewerSelectingURLs({"https://example.org"});
    QCoreApplication::processEvents();
    EXPECT_FALSE(std::filesystem::exists(desk.folder.path("opened")));
}

}  // namespace
}  // namespace calorivo

#include "QtWorkspaceTest.moc"
