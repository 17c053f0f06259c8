#include "ui/qt/PaneForm.h"

#include "ui/qt/KeyBinding.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCheckBox>
#include <QFont>
#include <QFontMetrics>
#include <QGridLayout>
#include <QLayoutItem>
#include <QRadioButton>
#include <QResizeEvent>
#include <QVBoxLayout>
#include <QWidget>

#include <algorithm>

namespace calorivo {

namespace {

constexpr int labels = 0;
constexpr int controls = 1;
constexpr int margin = 20;
constexpr int gap = 10;

}  // namespace

QString spokenText(const QString& text) {
    QString spoken;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text.at(at) == QLatin1Char('&') && ++at == text.size()) break;
        spoken += text.at(at);
    }
    if (spoken.endsWith(QLatin1Char(':'))) spoken.chop(1);
    return spoken;
}

PaneNote::PaneNote(const QString& text, QWidget* parent) : QLabel(parent) {
    constexpr double smallText = 0.9;
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * smallText);
    setFont(small);
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignTop | Qt::AlignLeading);
    setNote(text);
}

void PaneNote::setNote(const QString& text) {
    setText(text);
    setVisible(!text.isEmpty());
}

QSize PaneNote::sizeHint() const {
    constexpr int charactersInALine = 62;
    const int ownWidth = charactersInALine * fontMetrics().averageCharWidth();
    return {ownWidth, heightForWidth(std::max(ownWidth, width()))};
}

void PaneNote::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    if (event->size().width() != event->oldSize().width()) updateGeometry();
}

PaneForm::PaneForm(QWidget& pane) : pane_(pane), grid_(*new QGridLayout(&pane)) {
    grid_.setContentsMargins(margin, margin, margin, margin);
    grid_.setColumnStretch(controls, 1);
}

void PaneForm::addRow(const QString& label, QWidget& field) { addRow(label, field, field); }

void PaneForm::addRow(const QString& label, QWidget& row, QWidget& field) {
    auto* const heading = new QLabel(label, &pane_);
    heading->setBuddy(&field);
    // Beside the first line of what it names, which may have more of them.
    heading->setMinimumHeight(field.sizeHint().height());
    if (field.accessibleName().isEmpty()) field.setAccessibleName(spokenText(label));
    const int line = grid_.rowCount();
    grid_.addWidget(heading, line, labels, Qt::AlignTrailing | Qt::AlignTop);
    grid_.addWidget(&row, line, controls);
}

void PaneForm::addRow(QWidget& heading, QWidget& field) {
    const int line = grid_.rowCount();
    grid_.addWidget(&heading, line, labels, Qt::AlignTrailing | Qt::AlignVCenter);
    grid_.addWidget(&field, line, controls);
}

void PaneForm::addRow(QWidget& field) { grid_.addWidget(&field, grid_.rowCount(), controls); }

QCheckBox& PaneForm::addCheckBox(const QString& text, const KeyValueCoding& keys, std::string_view key) {
    QCheckBox& box = makeCheckBox(text, keys, key);
    // As wide as its text: what is clicked is what is seen.
    grid_.addWidget(&box, grid_.rowCount(), controls, Qt::AlignLeading);
    return box;
}

QCheckBox& PaneForm::makeCheckBox(const QString& text, const KeyValueCoding& keys, std::string_view key) {
    auto& box = *new QCheckBox(text, &pane_);
    box.setAccessibleName(spokenText(text));
    KeyBinding::bind(box, keys, key);
    return box;
}

PaneNote& PaneForm::addNote(const QString& text, const char* objectName) {
    auto& note = *new PaneNote(text, &pane_);
    note.setObjectName(QLatin1String(objectName));
    grid_.addWidget(&note, grid_.rowCount(), controls);
    return note;
}

void PaneForm::addGap() { grid_.setRowMinimumHeight(grid_.rowCount(), gap); }

void PaneForm::end() { grid_.setRowStretch(grid_.rowCount(), 1); }

PaneChoice::PaneChoice(QWidget& pane, const QString& name)
    : widget_(*new QWidget(&pane)), group_(*new QButtonGroup(&pane)) {
    group_.setObjectName(name);
    auto* const column = new QVBoxLayout(&widget_);
    column->setContentsMargins(0, 0, 0, 0);
}

void PaneChoice::add(int id, const QString& text) {
    auto* const button = new QRadioButton(text, &widget_);
    button->setObjectName(group_.objectName() + QString::number(id));
    button->setAccessibleName(spokenText(text));
    group_.addButton(button, id);
    widget_.layout()->addWidget(button);
    widget_.layout()->setAlignment(button, Qt::AlignLeading);
}

QWidget& PaneChoice::first() const { return *group_.buttons().constFirst(); }

}  // namespace calorivo
