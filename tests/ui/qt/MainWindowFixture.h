#pragma once

#include "app/PyroluxAppDelegate.h"
#include "smc/SmcService.h"
#include "support/PrintedText.h"
#include "support/RecordingPlatform.h"
#include "ui/qt/MainWindow.h"
#include "ui/qt/SensorRowsView.h"
#include "ui/qt/SensorTableModel.h"

#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace calorivo::test {

/// A source of sensors by its name alone.
class NamedProvider final : public SmcService {
  public:
    explicit NamedProvider(std::string given) : name(std::move(given)) {}
    [[nodiscard]] std::string_view sourceName() const override { return name; }
    [[nodiscard]] std::optional<std::string> modelName() const override { return std::nullopt; }
    [[nodiscard]] std::optional<KeyOrigin> originOf(std::string_view /*key*/) override { return {}; }
    [[nodiscard]] std::vector<std::string> problems() const override { return told; }

    std::string name;
    std::vector<std::string> told;

  protected:
    bool isPresent() override { return false; }
    std::optional<std::uint32_t> keyAt(std::uint32_t /*index*/) override { return std::nullopt; }
    kern_return_t keyInformation(std::uint32_t /*key*/, SmcKeyInformation& /*information*/) override {
        return io_return::success;
    }
    kern_return_t readBytes(std::uint32_t /*key*/, std::span<std::uint8_t, 32> /*bytes*/) override {
        return io_return::success;
    }
};

/// The program's controller on a recording platform, with its main window, which is not shown at first. The
/// machine has no sensors but those that a test gives it before `start`; drives are checked when there are
/// any.
class MainWindowFixture : public testing::Test, public SensorTableView {
  protected:
    ~MainWindowFixture() override { window.reset(); }

    /// Through both stages of start-up, with one check at the end.
    void start() {
        machine.userDefaults.stored["isFirstLaunch"] = false;
        machine.userDefaults.stored["checkDriveTemps"] = !drives.empty();
        delegate = std::make_unique<PyroluxAppDelegate>(machine.platform(),
                                                        Interface{machine.windows, machine.controls, *this},
                                                        Configuration{}, ports());
        window = std::make_unique<MainWindow>(settings);
        window->attach({*delegate, machine.dispatch, &provider, sourceDetail,
                        [this](SensorKey key) { return explanationOf(key); },
                        [this](const std::string& serial) {
                            askedDrive = serial;
                            return driveExplanation;
                        }});
        delegate->awakeFromNib();
        delegate->applicationDidFinishLaunching();
        delegate->applicationDidBecomeActive();
        machine.dispatch.time.run();
    }
    void check() {
        delegate->checkCycle().checkTimerFired();
        machine.dispatch.time.run();
    }
    /// By the area's name.
    void choose(std::string_view area) {
        const auto& entries = delegate->sourceList().sourceListNames.get();
        for (std::size_t index = 0; index < entries.size(); ++index)
            if (entries[index].name == area) delegate->sourceList().setSourceListSelectedIndexes({index});
    }
    void show() {
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        settle();
    }
    /// Everything that is to be painted is painted.
    static void settle() {
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }

    void reloadData() override {
        if (window) window->reloadData();
    }
    void setNeedsDisplay() override {
        if (window) window->setNeedsDisplay();
    }

    template <typename Widget>
    [[nodiscard]] Widget& child(const char* name) const {
        auto* const found = window->findChild<Widget*>(QString::fromUtf8(name));
        if (found == nullptr) throw std::out_of_range(name);
        return *found;
    }
    [[nodiscard]] SensorRowsView& table() const { return child<SensorRowsView>("sensorTable"); }
    [[nodiscard]] SensorTableModel& model() const {
        return dynamic_cast<SensorTableModel&>(*table().model());
    }
    /// Name and temperature of every row.
    [[nodiscard]] std::vector<std::string> rows() const {
        std::vector<std::string> all;
        for (int row = 0; row < model().rowCount(); ++row)
            all.push_back(model().identifierOfRow(row) + " " + model().valueOfRow(row).toStdString());
        return all;
    }
    [[nodiscard]] FakeSmc& smc() { return machine.ioKit.smc; }

    PrintedText printed;
    RecordingPlatform machine;
    NamedProvider provider{"applesmc"};
    std::string sourceDetail;
    /// What is read at each check.
    std::vector<DriveDictionary> drives;
    std::vector<Explanation> explanations;
    /// What is known of whichever drive, and which one was asked for last.
    std::optional<DriveExplanation> driveExplanation;
    std::string askedDrive;
    DesktopSettings settings;
    std::unique_ptr<PyroluxAppDelegate> delegate;
    std::unique_ptr<MainWindow> window;

  private:
    class Controller final : public SmartController {
      public:
        explicit Controller(const std::vector<DriveDictionary>& disks) : disks_(disks) {}
        void update() override {}
        [[nodiscard]] std::vector<DriveDictionary> allDisks() const override { return disks_; }

      private:
        const std::vector<DriveDictionary>& disks_;
    };

    [[nodiscard]] ApplicationPorts ports() {
        ApplicationPorts given = machine.ports();
        given.makeSmartController = [this] { return std::make_unique<Controller>(drives); };
        return given;
    }
    [[nodiscard]] std::optional<Explanation> explanationOf(SensorKey key) const {
        for (const Explanation& explanation : explanations)
            if (explanation.key == key) return explanation;
        return std::nullopt;
    }
};

}  // namespace calorivo::test
