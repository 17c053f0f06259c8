#include "ui/qt/MainWindowControls.h"

#include "ui/qt/TemplateIcon.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>

namespace calorivo {

namespace {

QComboBox* unitChoice(QWidget* parent) {
    auto* const choice = new QComboBox(parent);
    choice->setObjectName(QStringLiteral("unitPopup"));
    choice->addItem(QStringLiteral("°C"));
    choice->addItem(QStringLiteral("°F"));
    return choice;
}

}  // namespace

MainWindowControls::MainWindowControls(QWidget* parent)
    : QWidget(parent),
      filter_(new QLineEdit(this)),
      unit_(unitChoice(this)),
      details_(button(QStringLiteral("detailsButton"), QStringLiteral("details"), tr("Details"))) {
    filter_->setObjectName(QStringLiteral("sensorFilter"));
    filter_->setAccessibleName(tr("Filter sensors"));
    filter_->setPlaceholderText(tr("Filter by name or key"));
    filter_->setClearButtonEnabled(true);
    filter_->addAction(templateIcon(QStringLiteral("search")), QLineEdit::LeadingPosition);
    filter_->installEventFilter(this);
    connect(filter_, &QLineEdit::textChanged, this, &MainWindowControls::filterChanged);

    unit_->setAccessibleName(tr("Unit of temperatures"));
    unit_->setToolTip(unit_->accessibleName());
    connect(unit_, &QComboBox::activated, this, &MainWindowControls::unitChosen);

    auto* const reset =
        button(QStringLiteral("resetMaximums"), QStringLiteral("reset"), tr("Reset Maximums"));
    reset->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    reset->setToolTip(tr("Forget the highest temperatures recorded so far"));
    connect(reset, &QToolButton::clicked, this, &MainWindowControls::resetMaximumsWanted);

    details_->setCheckable(true);
    details_->setToolTip(tr("Show where the value of the selected sensor comes from"));
    connect(details_, &QToolButton::clicked, this, &MainWindowControls::detailsWanted);

    auto* const preferences =
        button(QStringLiteral("preferencesButton"), QStringLiteral("preferences"), tr("Preferences"));
    connect(preferences, &QToolButton::clicked, this, &MainWindowControls::preferencesWanted);

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addWidget(filter_, 1);
    for (QWidget* const widget : {static_cast<QWidget*>(reset), static_cast<QWidget*>(unit_),
                                  static_cast<QWidget*>(details_), static_cast<QWidget*>(preferences)})
        layout->addWidget(widget);
}

QToolButton* MainWindowControls::button(const QString& name, const QString& icon, const QString& text) {
    auto* const made = new QToolButton(this);
    made->setObjectName(name);
    made->setIcon(templateIcon(icon));
    made->setText(text);
    made->setAccessibleName(text);
    made->setToolTip(text);
    made->setAutoRaise(true);
    made->setFocusPolicy(Qt::StrongFocus);
    return made;
}

QString MainWindowControls::filter() const { return filter_->text(); }

void MainWindowControls::clearFilter() { filter_->clear(); }

void MainWindowControls::focusFilter() {
    filter_->setFocus(Qt::ShortcutFocusReason);
    filter_->selectAll();
}

void MainWindowControls::typeIntoFilter(const QString& text) {
    filter_->setFocus(Qt::OtherFocusReason);
    filter_->end(false);
    filter_->insert(text);
}

void MainWindowControls::setUnit(int unit) { unit_->setCurrentIndex(unit == 0 ? 0 : 1); }

void MainWindowControls::setDetailsShown(bool areShown) { details_->setChecked(areShown); }

bool MainWindowControls::eventFilter(QObject* watched, QEvent* event) {
    if (watched != filter_ || event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const auto* const key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
        case Qt::Key_Escape:
            if (filter_->text().isEmpty())
                Q_EMIT filterLeft();
            else
                filter_->clear();
            return true;
        case Qt::Key_Down:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Q_EMIT filterLeft();
            return true;
        default:
            return QWidget::eventFilter(watched, event);
    }
}

}  // namespace calorivo
