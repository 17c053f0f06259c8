#pragma once

#include <QMenu>
#include <QMenuBar>

#include <memory>

namespace calorivo {

class Actions;

/// The menu bar of the main window. The actions must outlive it.
[[nodiscard]] QMenuBar* makeMenuBar(Actions& actions, QWidget* parent);

/// The menu of the status item, named "statusMenu". The actions must outlive it.
[[nodiscard]] std::unique_ptr<QMenu> makeStatusMenu(Actions& actions);

}  // namespace calorivo
