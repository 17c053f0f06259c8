#pragma once

#include "platform/KeyValueCoding.h"

#include <QLabel>
#include <QSize>
#include <QString>

#include <string_view>

QT_BEGIN_NAMESPACE
class QButtonGroup;
class QCheckBox;
class QGridLayout;
class QResizeEvent;
class QWidget;
QT_END_NAMESPACE

namespace calorivo {

/// The text as a screen reader is to say it: without mnemonics and the colon at its end.
[[nodiscard]] QString spokenText(const QString& text);

/// An explanation in small text. It has a width of its own, and is as high as its text needs at that, so that
/// a window around it knows its size. An empty one takes no place.
class PaneNote final : public QLabel {
    Q_OBJECT

  public:
    PaneNote(const QString& text, QWidget* parent);

    void setNote(const QString& text);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    [[nodiscard]] bool hasHeightForWidth() const override { return false; }

  protected:
    void resizeEvent(QResizeEvent* event) override;
};

/// Lays out a pane of the preferences: labels end where controls begin, explanations stand below what they
/// explain. The rows' order is the tab order. Everything that is added becomes a child of the pane.
class PaneForm {
  public:
    explicit PaneForm(QWidget& pane);

    /// `label` names the field: its mnemonic leads there, and screen readers say it.
    void addRow(const QString& label, QWidget& field);
    /// The same where the field is a part of what stands in the row.
    void addRow(const QString& label, QWidget& row, QWidget& field);
    /// A row that begins with a control.
    void addRow(QWidget& heading, QWidget& field);
    /// A row without a label.
    void addRow(QWidget& field);
    /// A check box for the key, below the other controls.
    QCheckBox& addCheckBox(const QString& text, const KeyValueCoding& keys, std::string_view key);
    PaneNote& addNote(const QString& text, const char* objectName);
    void addGap();
    /// To be called last: room that is left over goes below the rows.
    void end();

    /// A check box of the pane that is still to be placed.
    QCheckBox& makeCheckBox(const QString& text, const KeyValueCoding& keys, std::string_view key);

  private:
    QWidget& pane_;
    QGridLayout& grid_;
};

/// Two or more buttons of which one is checked, below each other. The buttons are named for the group's name
/// and their ids.
class PaneChoice {
  public:
    PaneChoice(QWidget& pane, const QString& name);

    void add(int id, const QString& text);
    [[nodiscard]] QButtonGroup& group() const { return group_; }
    /// The buttons' place in the form.
    [[nodiscard]] QWidget& widget() const { return widget_; }
    /// The one that a label's mnemonic leads to.
    [[nodiscard]] QWidget& first() const;

  private:
    QWidget& widget_;
    QButtonGroup& group_;
};

}  // namespace calorivo
