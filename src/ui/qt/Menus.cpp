#include "ui/qt/Menus.h"

#include "app/Windows.h"
#include "ui/qt/Actions.h"

#include <QCoreApplication>
#include <QLatin1String>
#include <QString>

#include <initializer_list>

namespace calorivo {

namespace {

QString text(const char* english) { return QCoreApplication::translate("Menus", english); }

/// A null action stands for a separator.
void fill(QMenu& menu, std::initializer_list<QAction*> actions) {
    for (QAction* const action : actions) {
        if (action != nullptr)
            menu.addAction(action);
        else
            menu.addSeparator();
    }
}

void addMenu(QMenuBar& bar, const QString& title, const char* name, std::initializer_list<QAction*> actions) {
    QMenu* const menu = bar.addMenu(title);
    menu->setObjectName(QLatin1String(name));
    fill(*menu, actions);
}

}  // namespace

QMenuBar* makeMenuBar(Actions& actions, QWidget* parent) {
    auto* const bar = new QMenuBar(parent);
    bar->setObjectName(QStringLiteral("menuBar"));
    addMenu(*bar, text(QT_TRANSLATE_NOOP("Menus", "&File")), "fileMenu",
            {actions.openLog, actions.revealLog, nullptr, actions.closeWindow, actions.quit});
    addMenu(
        *bar, text(QT_TRANSLATE_NOOP("Menus", "&Edit")), "editMenu",
        {actions.copyRows, actions.findSensor, nullptr, actions.resetMaximums, nullptr, actions.preferences});
    addMenu(*bar, text(QT_TRANSLATE_NOOP("Menus", "&View")), "viewMenu",
            {actions.celsius, actions.fahrenheit, nullptr, actions.showDetails});
    addMenu(*bar, text(QT_TRANSLATE_NOOP("Menus", "&Help")), "helpMenu",
            {actions.help, nullptr, actions.feedback, actions.rate, actions.follow, actions.newsletter,
             actions.moreApps, nullptr, actions.about});
    return bar;
}

std::unique_ptr<QMenu> makeStatusMenu(Actions& actions) {
    auto menu = std::make_unique<QMenu>();
    menu->setObjectName(
        QString::fromUtf8(statusMenuName.data(), static_cast<qsizetype>(statusMenuName.size())));
    fill(*menu, {actions.statusAbout, nullptr, actions.showMainWindow, actions.preferences, nullptr,
                 actions.statusQuit});
    return menu;
}

}  // namespace calorivo
