#include "platform/qt/DBusMenuProperties.h"

#include <QAction>
#include <QActionGroup>
#include <QIcon>
#include <QKeyCombination>
#include <QMenu>

#include <algorithm>
#include <array>
#include <utility>

namespace calorivo {

namespace {

/// Keys whose names in Qt and in the protocol, which takes those of X, are not the same.
struct KeyName {
    Qt::Key key;
    const char* name;
};

constexpr std::array keyNames{
    KeyName{Qt::Key_Escape, "Escape"},
    KeyName{Qt::Key_Delete, "Delete"},
    KeyName{Qt::Key_Insert, "Insert"},
    KeyName{Qt::Key_Backspace, "BackSpace"},
    KeyName{Qt::Key_PageUp, "Page_Up"},
    KeyName{Qt::Key_PageDown, "Page_Down"},
    KeyName{Qt::Key_Space, "space"},
    KeyName{Qt::Key_Plus, "plus"},
    KeyName{Qt::Key_Minus, "minus"},
    KeyName{Qt::Key_Comma, "comma"},
    KeyName{Qt::Key_Period, "period"},
    KeyName{Qt::Key_Slash, "slash"},
    KeyName{Qt::Key_Question, "question"},
    KeyName{Qt::Key_Equal, "equal"},
    KeyName{Qt::Key_BracketLeft, "bracketleft"},
    KeyName{Qt::Key_BracketRight, "bracketright"},
};

struct ModifierName {
    Qt::KeyboardModifier modifier;
    const char* name;
};

constexpr std::array modifierNames{
    ModifierName{Qt::ControlModifier, "Control"},
    ModifierName{Qt::AltModifier, "Alt"},
    ModifierName{Qt::ShiftModifier, "Shift"},
    ModifierName{Qt::MetaModifier, "Super"},
};

QString nameOfKey(Qt::Key key) {
    const auto known = std::ranges::find(keyNames, key, &KeyName::key);
    if (known != keyNames.end()) return QString::fromLatin1(known->name);
    const QString name = QKeySequence(key).toString(QKeySequence::PortableText);
    return name.size() == 1 ? name.toLower() : name;
}

QString toggleTypeOf(const QAction& action) {
    const QActionGroup* const group = action.actionGroup();
    return group != nullptr && group->isExclusive() ? QStringLiteral("radio") : QStringLiteral("checkmark");
}

}  // namespace

QVariantMap menuPropertiesOf(const QAction& action) {
    QVariantMap properties;
    const auto set = [&properties](const char* name, const QVariant& value) {
        const QString key = QString::fromLatin1(name);
        if (value != menuPropertyDefault(key)) properties.insert(key, value);
    };
    set("visible", action.isVisible());
    if (action.isSeparator()) {
        set("type", QStringLiteral("separator"));
        return properties;
    }
    set("label", menuLabelOf(action.text()));
    set("enabled", action.isEnabled());
    if (action.menu() != nullptr) set("children-display", QStringLiteral("submenu"));
    if (action.isCheckable()) {
        set("toggle-type", toggleTypeOf(action));
        set("toggle-state", action.isChecked() ? 1 : 0);
    }
    if (action.isIconVisibleInMenu()) set("icon-name", action.icon().name());
    set("shortcut", QVariant::fromValue(menuShortcutOf(action.shortcut())));
    return properties;
}

QVariant menuPropertyDefault(const QString& name) {
    static const QVariantMap defaults{
        {QStringLiteral("type"), QStringLiteral("standard")},
        {QStringLiteral("label"), QString()},
        {QStringLiteral("enabled"), true},
        {QStringLiteral("visible"), true},
        {QStringLiteral("icon-name"), QString()},
        {QStringLiteral("shortcut"), QVariant::fromValue(MenuShortcut())},
        {QStringLiteral("toggle-type"), QString()},
        {QStringLiteral("toggle-state"), -1},
        {QStringLiteral("children-display"), QString()},
    };
    return defaults.value(name);
}

QString menuLabelOf(const QString& text) {
    QString label;
    bool hasAccessKey = false;
    const QString shown = text.section(QLatin1Char('\t'), 0, 0);  // what follows is the shortcut's text
    for (qsizetype i = 0; i < shown.size(); ++i) {
        const QChar letter = shown.at(i);
        if (letter == QLatin1Char('_')) {
            label += QStringLiteral("__");
        } else if (letter != QLatin1Char('&')) {
            label += letter;
        } else if (i + 1 < shown.size() && shown.at(i + 1) == QLatin1Char('&')) {
            label += letter;
            ++i;
        } else if (i + 1 < shown.size() && !std::exchange(hasAccessKey, true)) {
            label += QLatin1Char('_');
        }
    }
    return label;
}

MenuShortcut menuShortcutOf(const QKeySequence& sequence) {
    MenuShortcut shortcut;
    for (int i = 0; i < sequence.count(); ++i) {
        const QKeyCombination chord = sequence[static_cast<uint>(i)];
        QStringList names;
        for (const ModifierName& modifier : modifierNames)
            if (chord.keyboardModifiers().testFlag(modifier.modifier))
                names.append(QString::fromLatin1(modifier.name));
        names.append(nameOfKey(chord.key()));
        shortcut.append(names);
    }
    return shortcut;
}

}  // namespace calorivo
