#pragma once

#include "app/DesktopSettings.h"
#include "support/Application.h"
#include "ui/qt/PreferencesWindow.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLabel>
#include <QStackedWidget>
#include <QString>
#include <QTest>
#include <QWidget>

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace calorivo::test {

/// The controls of a whole program, as far as the preferences window has them.
class WindowControls final : public Controls {
  public:
    explicit WindowControls(PreferencesWindow& window) : window_(window) {}

    void setIntValue(LimitLabel label, std::int32_t value) override { window_.setIntValue(label, value); }
    void setSelectedItemIdentifier(std::string_view identifier) override {
        window_.setSelectedItemIdentifier(identifier);
    }
    void selectTabViewItemAtIndex(std::int32_t index) override { window_.selectTabViewItemAtIndex(index); }
    void setStatusAboutMenuItemTitle(const std::string& /*title*/) override {}
    void setQuitMenuItemKeyEquivalent(std::string_view /*key*/) override {}

  private:
    PreferencesWindow& window_;
};

/// The preferences window of a program that has started; see Application for its machine.
class PreferencesWindowFixture : public testing::Test {
  protected:
    /// Starts the program and shows the window.
    void start() {
        Interface interface { application.machine.windows, controls, application.machine.cpuTableView };
        made_ = std::make_unique<PyroluxAppDelegate>(application.machine.platform(), interface,
                                                     application.configuration, application.machine.ports());
        window.attach(*made_, ports);
        made_->awakeFromNib();
        made_->applicationDidFinishLaunching();
        made_->applicationDidBecomeActive();
        application.machine.dispatch.time.run();
        application.machine.calls.clear();
        window.show();
        window.activateWindow();
        static_cast<void>(QTest::qWaitForWindowActive(&window));
    }
    void TearDown() override { window.hide(); }

    [[nodiscard]] PyroluxAppDelegate& delegate() { return *made_; }
    [[nodiscard]] Value valueOf(std::string_view key) { return made_->keys().valueForKey(key); }
    void assign(std::string_view key, const Value& value) { made_->keys().setValueForKey(value, key); }

    [[nodiscard]] QStackedWidget& panes() const {
        return *window.findChild<QStackedWidget*>(QStringLiteral("preferencesTabView"));
    }
    /// The control of that name, whose pane is chosen now.
    template <typename Control>
    Control& control(const char* name) {
        auto* const found = window.findChild<Control*>(QLatin1String(name));
        if (found == nullptr) throw std::runtime_error(std::string("there is no control ") + name);
        for (int index = 0; index < panes().count(); ++index)
            if (panes().widget(index)->isAncestorOf(found)) window.selectTabViewItemAtIndex(index);
        found->setFocus();
        return *found;
    }
    [[nodiscard]] QString noteOf(const char* name) {
        return control<QWidget>(name).isVisible() ? control<QLabel>(name).text() : QString();
    }

    Application application;
    DesktopSettings settings;
    PreferencesPorts ports{.sendTestNotification = [this] { asked += "test "; },
                           .openLog = [this] { asked += "open "; },
                           .revealLog = [this] { asked += "reveal "; },
                           .notificationServiceProblem = [this] { return problem; },
                           .canCheckDrives = [this] { return canCheckDrives; }};
    /// What the ports were asked for.
    std::string asked;
    std::string problem;
    bool canCheckDrives = true;
    PreferencesWindow window{settings};
    WindowControls controls{window};

  private:
    std::unique_ptr<PyroluxAppDelegate> made_;
};

/// The middle of a button's own mark, where it can always be clicked.
inline void click(QAbstractButton& button) {
    QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(8, button.height() / 2));
}

}  // namespace calorivo::test
