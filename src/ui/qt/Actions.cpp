#include "ui/qt/Actions.h"

#include "app/PyroluxAppDelegate.h"

#include <QActionGroup>
#include <QChar>
#include <QString>

#include <array>
#include <cstdint>

namespace calorivo {

namespace {

constexpr std::int32_t celsiusUnit = 0;
constexpr std::int32_t fahrenheitUnit = 1;

}  // namespace

Actions::Actions(QObject* parent)
    : QObject(parent),
      showMainWindow(make("showMainWindow", tr("Show &Main Window"))),
      preferences(make("preferences", tr("&Preferences…"), Qt::CTRL | Qt::Key_Comma)),
      resetMaximums(make("resetMaximums", tr("&Reset Maximums"), Qt::CTRL | Qt::Key_R)),
      copyRows(make("copyRows", tr("&Copy"), Qt::CTRL | Qt::Key_C)),
      findSensor(make("findSensor", tr("&Find Sensor…"), Qt::CTRL | Qt::Key_F)),
      showDetails(make("showDetails", tr("Show &Details"), Qt::CTRL | Qt::Key_I)),
      celsius(make("celsius", tr("&Celsius"))),
      fahrenheit(make("fahrenheit", tr("&Fahrenheit"))),
      closeWindow(make("closeWindow", tr("&Close Window"), Qt::CTRL | Qt::Key_W)),
      quit(make("quit", tr("&Quit"), Qt::CTRL | Qt::Key_Q)),
      statusQuit(make("statusQuit", tr("&Quit Calorivo"), Qt::CTRL | Qt::Key_Q)),
      about(make("about", tr("&About Calorivo"))),
      statusAbout(make("statusAbout", tr("Calorivo"))),
      help(make("help", tr("Calorivo &Help"), Qt::Key_F1)),
      feedback(make("feedback", tr("&Send Feedback…"))),
      rate(make("rate", tr("&Rate Calorivo"))),
      follow(make("follow", tr("&Follow the Makers"))),
      moreApps(make("moreApps", tr("&More from the Makers"))),
      newsletter(make("newsletter", tr("Subscribe to the &Newsletter"))),
      openLog(make("openLog", tr("&Open Log File"))),
      revealLog(make("revealLog", tr("Show Log File in &Folder"))) {
    makeUnitsExclusive();
    showDetails->setCheckable(true);
    openLog->setEnabled(false);
    revealLog->setEnabled(false);
    setRoles();
}

QAction* Actions::make(const char* name, const QString& text, const QKeySequence& shortcut) {
    auto* const action = new QAction(text, this);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(shortcut);
    action->setMenuRole(QAction::NoRole);
    return action;
}

void Actions::makeUnitsExclusive() {
    auto* const units = new QActionGroup(this);
    for (QAction* const unit : {celsius, fahrenheit}) {
        unit->setCheckable(true);
        units->addAction(unit);
    }
    celsius->setChecked(true);
}

void Actions::setRoles() {
    about->setMenuRole(QAction::AboutRole);
    preferences->setMenuRole(QAction::PreferencesRole);
    quit->setMenuRole(QAction::QuitRole);
}

void Actions::attach(PyroluxAppDelegate& delegate) {
    connect(showMainWindow, &QAction::triggered, this, [&delegate] { delegate.activateAndShowMainWindow(); });
    connect(preferences, &QAction::triggered, this, [&delegate] { delegate.activateAndShowPreferences(); });
    connect(resetMaximums, &QAction::triggered, this,
            [&delegate] { delegate.checkCycle().resetMaxTempsClicked(); });
    attachUnit(delegate);
    attachLinks(delegate);
    attachLog(delegate);
}

void Actions::attachUnit(PyroluxAppDelegate& delegate) {
    const KeyValueCoding& keys = delegate.keys();
    const auto show = [this, &keys] {
        const bool isCelsius = keys.valueForKey("tempUnit").intValue() == celsiusUnit;
        (isCelsius ? celsius : fahrenheit)->setChecked(true);
    };
    const auto choose = [&keys](std::int32_t unit) {
        // Each assignment has everything drawn anew.
        if (keys.valueForKey("tempUnit").intValue() != unit) keys.setValueForKey(unit, "tempUnit");
    };
    connect(celsius, &QAction::triggered, this, [choose] { choose(celsiusUnit); });
    connect(fahrenheit, &QAction::triggered, this, [choose] { choose(fahrenheitUnit); });
    unitObservation_ = keys.observe("tempUnit", show);
    show();
}

void Actions::attachLinks(PyroluxAppDelegate& delegate) {
    struct Link {
        QAction* action;
        void (LinkActions::*open)();
    };
    const std::array links{Link{help, &LinkActions::helpAction},
                           Link{feedback, &LinkActions::thankYouFeedbackClicked},
                           Link{rate, &LinkActions::thankYouRateClicked},
                           Link{follow, &LinkActions::twitterFollowClicked},
                           Link{moreApps, &LinkActions::moreAppsClicked},
                           Link{newsletter, &LinkActions::subscribeToNewsletterClicked}};
    for (const Link& link : links)
        connect(link.action, &QAction::triggered, this,
                [&delegate, open = link.open] { (delegate.linkActions().*open)(); });
}

void Actions::attachLog(PyroluxAppDelegate& delegate) {
    const KeyValueCoding& keys = delegate.keys();
    const auto show = [this, &keys] {
        const bool hasFile = !keys.valueForKey("logFileURL").stringValue().empty();
        openLog->setEnabled(hasFile);
        revealLog->setEnabled(hasFile);
    };
    logFileObservation_ = keys.observe("logFileURL", show);
    show();
}

void Actions::setQuitMenuItemKeyEquivalent(std::string_view key) {
    const QString letter = QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())).toUpper();
    statusQuit->setShortcut(letter.isEmpty() ? QKeySequence()
                                             : QKeySequence(QLatin1String("Ctrl+") + letter));
}

void Actions::setStatusAboutMenuItemTitle(const std::string& title) {
    QString text = QString::fromStdString(title);
    statusAbout->setText(text.replace(QLatin1Char('&'), QLatin1String("&&")));
}

}  // namespace calorivo
