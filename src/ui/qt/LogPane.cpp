#include "ui/qt/LogPane.h"

#include "ui/qt/KeyBinding.h"
#include "ui/qt/PaneForm.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QUrl>

#include <utility>

namespace calorivo {

LogPane::LogPane(const KeyValueCoding& keys, PreferencesPorts ports, QWidget* parent)
    : QWidget(parent), keys_(keys), ports_(std::move(ports)) {
    PaneForm form(*this);
    form.addCheckBox(tr("&Write every check to a log file"), keys_, "logToFile");
    form.addGap();
    QCheckBox& temperatures = form.makeCheckBox(tr("&Temperatures"), keys_, "logTemperatures");
    form.addRow(tr("The log holds:"), temperatures);
    temperatures.setAccessibleName(tr("Log temperatures"));
    form.addCheckBox(tr("&Fan speeds"), keys_, "logFanSpeeds").setAccessibleName(tr("Log fan speeds"));
    form.addCheckBox(tr("Marks at temperatures &above their limits"), keys_, "logAlerts")
        .setAccessibleName(tr("Log marks at temperatures above their limits"));
    form.addGap();
    form.addCheckBox(tr("&Keep adding to the same file"), keys_, "useSameLogFile");
    form.addNote(
        tr("Otherwise the file is begun anew, and what it held is lost, whenever Calorivo starts and "
           "whenever what the log holds changes."),
        "useSameLogFileNote");
    form.addGap();
    addFile(form);
    form.end();
    KeyBinding::follow(*this, keys_, "logFileURL", [this] { refreshPorts(); });
}

void LogPane::addFile(PaneForm& form) {
    path_ = new QLineEdit(this);
    path_->setObjectName(QStringLiteral("logFileURL"));
    path_->setReadOnly(true);
    path_->setPlaceholderText(tr("None"));
    form.addRow(tr("&Log file:"), *path_);
    open_ = makeButton(tr("&Open"), "openLog", ports_.openLog);
    open_->setAccessibleName(tr("Open the log file"));
    reveal_ = makeButton(tr("&Show in Folder"), "revealLog", ports_.revealLog);
    reveal_->setAccessibleName(tr("Show the log file in its folder"));
    auto* const buttons = new QWidget(this);
    auto* const line = new QHBoxLayout(buttons);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(open_);
    line->addWidget(reveal_);
    line->addStretch(1);
    form.addRow(*buttons);
    fileNote_ = &form.addNote({}, "logFileURLNote");
}

QPushButton* LogPane::makeButton(const QString& text, const char* objectName,
                                 const std::function<void()>& port) {
    auto* const button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(objectName));
    connect(button, &QPushButton::clicked, this, [&port] { port(); });
    return button;
}

QString LogPane::logFilePath() const {
    const QString text = QString::fromStdString(keys_.valueForKey("logFileURL").stringValue());
    const QUrl url(text);
    return url.isLocalFile() ? url.toLocalFile() : text;
}

void LogPane::refreshPorts() {
    const QString path = logFilePath();
    path_->setText(path);
    path_->setToolTip(path);
    path_->setCursorPosition(0);
    open_->setEnabled(!path.isEmpty() && ports_.openLog);
    reveal_->setEnabled(!path.isEmpty() && ports_.revealLog);
    if (!ports_.openLog || !ports_.revealLog)
        fileNote_->setNote(tr("Not available: this program cannot open files here."));
    else
        fileNote_->setNote(
            path.isEmpty() ? tr("There is no log file, since there is no folder for documents.") : QString());
}

}  // namespace calorivo
