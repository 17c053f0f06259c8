#include "ui/qt/MainWindow.h"

#include "MainWindowFixture.h"
#include "ui/qt/AreaList.h"
#include "ui/qt/MainWindowStatus.h"

#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPaintEvent>
#include <QSignalSpy>
#include <QToolButton>

namespace calorivo {
namespace {

using Texts = std::vector<std::string>;

/// Two CPU sensors at 61 and 47.5 degrees, one GPU sensor at 70, a fan and a drive at 37; "All" is chosen and
/// the window is shown.
class MainWindowTest : public test::MainWindowFixture {
  protected:
    void SetUp() override {
        smc().setTemperature("TC0C", 61).setTemperature("TC1C", 47.5).setTemperature("TG0D", 70);
        smc().addFan(1800, 1200, 6000, "Left");
        drives = {{"Disk", "A1", 37}};
        start();
        choose("All");
        show();
    }
    [[nodiscard]] std::string label(const char* name) const {
        return child<QLabel>(name).text().toStdString();
    }
    [[nodiscard]] QLineEdit& filter() const { return child<QLineEdit>("sensorFilter"); }
};

/// Writes down what is painted of a widget.
struct PaintedRegions final : QObject {
    explicit PaintedRegions(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint) region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
    QRegion region;
};

TEST_F(MainWindowTest, ShowsRowsAveragesFansAndWhereItAllComesFrom) {
    EXPECT_EQ(rows(), (Texts{"TC0C 61°C", "TC1C 48°C", "TG0D 70°C", "A1 37°C"}));
    EXPECT_EQ(label("averageComputer"), "60°C");
    EXPECT_EQ(label("averageCPU"), "54°C");
    EXPECT_EQ(label("averageFans"), "Average of all fans: 1800 RPM");
    EXPECT_TRUE(child<QWidget>("fanTable").isVisible());
    EXPECT_EQ(child<MainWindowStatus>("statusLine").machine(), QStringLiteral("Model1,2 · Apple SMC"));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Calorivo"));
}

TEST_F(MainWindowTest, TellsWhenTheLastCheckWas) {
    machine.dispatch.time.setWallTime(WallTime(std::chrono::seconds(1'709'647'629)));
    check();
    EXPECT_EQ(child<MainWindowStatus>("statusLine").lastCheck(), QStringLiteral("Last check: 14:07:09"));
    EXPECT_EQ(child<MainWindowStatus>("statusLine").accessibleName(),
              QStringLiteral("Model1,2 · Apple SMC · Last check: 14:07:09"));
}

TEST_F(MainWindowTest, PaintsOnlyTheCellsThatChanged) {
    PaintedRegions painted(*table().viewport());
    check();
    settle();
    EXPECT_EQ(painted.region, QRegion());
    smc().setTemperature("TC1C", 52);
    check();
    settle();
    const auto cell = [this](int column) {
        return table().visualRect(model().index(1, column)).intersected(table().viewport()->rect());
    };
    EXPECT_EQ(painted.region, QRegion(cell(1)) + QRegion(cell(2)));
}

TEST_F(MainWindowTest, AnnouncesNothingWhileItIsHiddenAndCatchesUp) {
    QSignalSpy spy(&model(), &QAbstractItemModel::dataChanged);
    for (const bool isMinimized : {false, true}) {
        if (isMinimized)
            window->showMinimized();
        else
            window->hide();
        settle();
        spy.clear();
        smc().setTemperature("TC1C", isMinimized ? 66 : 52);
        smc().setSpeed("F0Ac", isMinimized ? 2400 : 3000);
        drives.front().temp = isMinimized ? 58 : 51;
        check();
        settle();
        EXPECT_EQ(spy.count(), 0) << isMinimized;
        EXPECT_EQ(label("averageFans"),
                  isMinimized ? "Average of all fans: 3000 RPM" : "Average of all fans: 1800 RPM");
        window->showNormal();
        settle();
        EXPECT_EQ(spy.count(), 4) << isMinimized;
        EXPECT_EQ(rows(), isMinimized ? (Texts{"TC0C 61°C", "TC1C 66°C", "TG0D 70°C", "A1 58°C"})
                                      : (Texts{"TC0C 61°C", "TC1C 52°C", "TG0D 70°C", "A1 51°C"}));
        EXPECT_EQ(label("averageFans"),
                  isMinimized ? "Average of all fans: 2400 RPM" : "Average of all fans: 3000 RPM");
    }
}

TEST_F(MainWindowTest, RecordsADriveWhileItIsSeenAndOnlyThen) {
    const auto maximum = [this] {
        return delegate->lists().sensorNameToCustomCellMap.at("A1").maxUsedValue();
    };
    EXPECT_EQ(maximum(), 37.0F);
    drives.front().temp = 44;
    check();
    settle();
    EXPECT_EQ(maximum(), 44.0F);
    window->hide();
    drives.front().temp = 59;
    check();
    settle();
    EXPECT_EQ(maximum(), 44.0F);
}

TEST_F(MainWindowTest, ShowsNoTicksAfterAResetWhileItWasHidden) {
    window->hide();
    check();
    delegate->checkCycle().resetMaxTempsClicked();
    window->show();
    settle();
    for (const auto& [name, cell] : delegate->lists().sensorNameToCustomCellMap)
        EXPECT_EQ(cell.maxUsedValue(), 0.0F) << name;
    check();
    settle();
    for (const auto& [name, cell] : delegate->lists().sensorNameToCustomCellMap)
        EXPECT_GT(cell.maxUsedValue(), 0.0F) << name;
}

TEST_F(MainWindowTest, KeepsWhatIsSelectedThroughAreasRowsAndFilters) {
    const auto selected = [this] {
        const int row = table().selectedRow();
        return row < 0 ? std::string() : model().identifierOfRow(row) + " " + std::to_string(row);
    };
    table().selectRow(2);
    EXPECT_EQ(selected(), "TG0D 2");
    choose("GPU");
    EXPECT_EQ(selected(), "TG0D 0");
    choose("CPU");
    EXPECT_EQ(selected(), "");
    choose("All");
    EXPECT_EQ(selected(), "TG0D 2");
    filter().setText(QStringLiteral("diode"));
    EXPECT_EQ(selected(), "TG0D 0");
    filter().setText(QStringLiteral("core"));
    EXPECT_EQ(selected(), "");
    filter().clear();
    EXPECT_EQ(selected(), "TG0D 2");
    table().selectRow(3);
    drives.insert(drives.begin(), {"New", "B2", 20});
    check();
    EXPECT_EQ(selected(), "A1 4");
}

TEST_F(MainWindowTest, CopiesTheSelectedRows) {
    smc().setTemperature("TC0C", 55);
    check();
    table().selectRow(3);
    table().selectionModel()->select(model().index(0, 0),
                                     QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QApplication::clipboard()->setText(QStringLiteral("before"));
    QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
    const QString copied = QStringLiteral("CPU Core 1\tTC0C\t55°C\t61°C\nDisk (A1)\tA1\t37°C\t37°C\n");
    EXPECT_EQ(QApplication::clipboard()->text(), copied);
    table().clearSelection();
    window->copyRows();
    EXPECT_EQ(QApplication::clipboard()->text(), copied);
}

TEST_F(MainWindowTest, TypingInTheTableFiltersAndEscapeEndsThat) {
    table().setFocus();
    QTest::keyClicks(&table(), QStringLiteral("g"));
    EXPECT_EQ(window->focusWidget(), &filter());
    QTest::keyClicks(&filter(), QStringLiteral("pu"));
    EXPECT_EQ(filter().text(), QStringLiteral("gpu"));
    EXPECT_EQ(rows(), (Texts{"TG0D 70°C"}));
    QTest::keyClick(&filter(), Qt::Key_Down);
    EXPECT_EQ(window->focusWidget(), &table());
    QTest::keyClick(&table(), Qt::Key_Escape);
    EXPECT_EQ(filter().text(), QString());
    EXPECT_EQ(rows().size(), 4U);
    window->focusFilter();
    EXPECT_EQ(window->focusWidget(), &filter());
    QTest::keyClicks(&filter(), QStringLiteral("x"));
    QTest::keyClick(&filter(), Qt::Key_Escape);
    EXPECT_EQ(filter().text(), QString());
    EXPECT_EQ(window->focusWidget(), &filter());
    QTest::keyClick(&filter(), Qt::Key_Escape);
    EXPECT_EQ(window->focusWidget(), &table());
}

TEST_F(MainWindowTest, TheUnitAndItsPopupFollowEachOther) {
    auto& popup = child<QComboBox>("unitPopup");
    EXPECT_EQ(popup.currentText(), QStringLiteral("°C"));
    delegate->keys().setValueForKey(std::int32_t{1}, "tempUnit");
    EXPECT_EQ(popup.currentText(), QStringLiteral("°F"));
    machine.dispatch.time.run();
    EXPECT_EQ(rows().front(), "TC0C 142°F");
    EXPECT_EQ(label("averageComputer"), "139°F");
    popup.setFocus();
    QTest::keyClick(&popup, Qt::Key_Up);
    machine.dispatch.time.run();
    EXPECT_EQ(delegate->preferences().tempUnit.get(), 0);
    EXPECT_EQ(rows().front(), "TC0C 61°C");
}

TEST_F(MainWindowTest, AsksForResettingAndForThePreferences) {
    QSignalSpy reset(window.get(), &MainWindow::resetMaximumsWanted);
    QSignalSpy preferences(window.get(), &MainWindow::preferencesWanted);
    QTest::mouseClick(&child<QToolButton>("resetMaximums"), Qt::LeftButton);
    EXPECT_EQ(reset.count(), 1);
    child<QToolButton>("preferencesButton").setFocus();
    QTest::keyClick(&child<QToolButton>("preferencesButton"), Qt::Key_Space);
    EXPECT_EQ(preferences.count(), 1);
    EXPECT_EQ(reset.count(), 1);
}

TEST_F(MainWindowTest, RemembersItsLayoutWhenItIsClosed) {
    QSignalSpy closed(window.get(), &MainWindow::closed);
    window->resize(901, 523);
    table().horizontalHeader()->resizeSection(0, 222);
    window->close();
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(window->isVisible());
    window.reset();

    window = std::make_unique<MainWindow>(settings);
    window->attach({*delegate, machine.dispatch, &provider, {}, {}});
    EXPECT_EQ(window->size(), QSize(901, 523));
    EXPECT_EQ(table().columnWidth(0), 222);
}

TEST_F(MainWindowTest, StandsWhereItStoodAlthoughTheSettingsAreEmptyOrUnreadable) {
    window.reset();
    settings.mainWindowGeometry = Data{1, 2, 3};
    settings.mainWindowSplitter = Data{1, 2, 3};
    settings.sensorTableHeader = Data{1, 2, 3};
    settings.fanTableHeader = Data{};
    window = std::make_unique<MainWindow>(settings);
    window->attach({*delegate, machine.dispatch, nullptr, {}, {}});
    show();
    EXPECT_EQ(rows().size(), 4U);
    EXPECT_EQ(child<MainWindowStatus>("statusLine").machine(), QStringLiteral("Model1,2"));
}

TEST_F(MainWindowTest, NamesEverythingForScreenReadersAndTests) {
    for (const char* const name : {"areaList", "sensorTable", "sensorFilter", "fanTable", "averageComputer",
                                   "averageCPU", "averageFans", "resetMaximums", "preferencesButton",
                                   "detailsButton", "unitPopup", "statusLine", "detailsPanel"})
        EXPECT_FALSE(child<QWidget>(name).accessibleName().isEmpty()) << name;
    EXPECT_EQ(child<QLabel>("averageCPU").accessibleName(), QStringLiteral("CPU Average 54°C"));
    EXPECT_EQ(window->objectName(), QStringLiteral("mainWindow"));
    for (const char* const name : {"areaList", "sensorTable", "sensorFilter", "unitPopup", "resetMaximums",
                                   "preferencesButton", "detailsButton", "fanTable"})
        EXPECT_TRUE((child<QWidget>(name).focusPolicy() & Qt::TabFocus) != 0) << name;
}

}  // namespace
}  // namespace calorivo
