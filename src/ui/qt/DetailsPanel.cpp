#include "ui/qt/DetailsPanel.h"

#include "smc/SmcDecode.h"
#include "ui/qt/LevelBarColors.h"
#include "ui/qt/MainWindowText.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QStringList>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace calorivo {

namespace {

/// Appends the fact unless it is not known.
void append(QList<Fact>& facts, const QString& caption, const QString& text) {
    if (!text.isEmpty()) facts.append({caption, text});
}

QString sourceText(const std::string& name) {
    if (name == "applesmc") return QStringLiteral("Apple SMC");
    if (name == "simulated") return DetailsPanel::tr("Simulated Mac");
    if (name == "keysfile") return DetailsPanel::tr("Keys file");
    return asQString(name);
}

QString driveSourceText(const std::string& name) {
    if (name == "drivetemp" || name == "nvme")
        return DetailsPanel::tr("The kernel's own reading (%1)").arg(asQString(name));
    if (name == "nvme log") return DetailsPanel::tr("The drive's health log");
    if (name == "udisks2") return DetailsPanel::tr("The service UDisks2, which asks the drive");
    return DetailsPanel::tr("The drive itself, which measures its temperature (SMART)");
}

QString bytesText(const SmcValue& value) {
    QStringList bytes;
    for (const std::uint8_t byte : smcDataBytes(value))
        bytes.append(QStringLiteral("%1").arg(byte, 2, 16, QLatin1Char('0')));
    return bytes.join(u' ');
}

void appendReading(QList<Fact>& facts, const Explanation& explanation) {
    const SmcValue& value = explanation.value;
    if (value.dataSize == 0) {
        append(facts, DetailsPanel::tr("Bytes"), DetailsPanel::tr("No data"));
    } else {
        append(facts, DetailsPanel::tr("Type"), asQString(std::string_view(value.dataType.data())));
        append(facts, DetailsPanel::tr("Bytes"), bytesText(value));
    }
    if (explanation.decoded)
        append(facts, DetailsPanel::tr("Decoded"), QString::number(*explanation.decoded, 'g', 8));
    if (!explanation.reading) return;
    const QString reading = QString::number(*explanation.reading, 'g', 8) + QStringLiteral(" °C");
    append(facts, DetailsPanel::tr("Reading"),
           explanation.isValid
               ? DetailsPanel::tr("%1, shown as %2").arg(reading, asQString(explanation.readingText))
               : DetailsPanel::tr("%1, which no sensor means: shown as N/A").arg(reading));
}

QString htmlOf(const Details& details, const QPalette& palette) {
    const QString muted = mutedTextColor(palette).name();
    if (details.facts.isEmpty())
        return QStringLiteral(R"(<p style="color:%1">%2</p>)").arg(muted, details.title.toHtmlEscaped());
    QString html = QStringLiteral("<p><b>%1</b></p>").arg(details.title.toHtmlEscaped());
    for (const Fact& fact : details.facts)
        html += QStringLiteral(R"(<p style="margin:0 0 7px 0"><span style="color:%1">%2</span><br>%3</p>)")
                    .arg(muted, fact.caption.toHtmlEscaped(),
                         fact.text.toHtmlEscaped().replace(u'\n', QStringLiteral("<br>")));
    return html;
}

}  // namespace

Details detailsOf(const Explanation& explanation) {
    QList<Fact> facts;
    append(facts, DetailsPanel::tr("Key"), asQString(explanation.key.view()));
    append(facts, DetailsPanel::tr("Source"), sourceText(explanation.source));
    append(facts, DetailsPanel::tr("Device"), asQString(explanation.origin.device));
    append(facts, DetailsPanel::tr("File"), asQString(explanation.origin.file));
    append(facts, DetailsPanel::tr("Content"), asQString(explanation.origin.content));
    append(facts, DetailsPanel::tr("Note"), asQString(explanation.origin.note));
    appendReading(facts, explanation);
    append(facts, DetailsPanel::tr("Named by"), asQString(explanation.naming));
    QStringList rules;
    for (const std::string& rule : explanation.grouping) rules.append(asQString(rule));
    append(facts, DetailsPanel::tr("Put into its area by"), rules.join(u'\n'));
    if (explanation.area != nullptr)
        append(facts, DetailsPanel::tr("Area"), asQString(explanation.area->name));
    append(facts, DetailsPanel::tr("Not shown"), asQString(explanation.hiddenReason));
    const QString title = asQString(explanation.name.empty() ? explanation.key.view() : explanation.name);
    return {title, facts};
}

Details detailsOfDrive(const QString& name, const QString& serial, const QString& reading,
                       const std::optional<DriveExplanation>& explanation) {
    const DriveExplanation known = explanation.value_or(DriveExplanation{});
    QList<Fact> facts;
    append(facts, DetailsPanel::tr("Serial number"), serial.trimmed());
    append(facts, DetailsPanel::tr("Device"), asQString(known.device));
    if (known.trouble.empty()) append(facts, DetailsPanel::tr("Source"), driveSourceText(known.source));
    append(facts, DetailsPanel::tr("Reading"), reading);
    if (known.isAsleep)
        append(facts, DetailsPanel::tr("Note"),
               DetailsPanel::tr("The drive is asleep and is not woken: this is its value from before."));
    append(facts, DetailsPanel::tr("No temperature"), asQString(known.trouble));
    return {name, facts};
}

DetailsPanel::DetailsPanel(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("detailsPanel"));
    setAccessibleName(tr("Details"));
    setMinimumWidth(fontMetrics().averageCharWidth() * 24);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
}

void DetailsPanel::show(const Details& details) {
    if (text_ == nullptr) makeText();
    const bool isSameRow = details.title == shown_.title;
    if (details == shown_ || (isSameRow && text_->textCursor().hasSelection())) return;
    const int scrolled = isSameRow ? text_->verticalScrollBar()->value() : 0;
    shown_ = details;
    text_->setHtml(htmlOf(shown_, palette()));
    text_->verticalScrollBar()->setValue(scrolled);
}

void DetailsPanel::showHint(const QString& hint) { show(Details{hint, {}}); }

QString DetailsPanel::plainText() const { return text_ != nullptr ? text_->toPlainText() : QString(); }

QSize DetailsPanel::sizeHint() const {
    const int character = fontMetrics().averageCharWidth();
    return {character * 38, character * 30};
}

void DetailsPanel::makeText() {
    text_ = new QTextBrowser(this);
    text_->setObjectName(QStringLiteral("detailsText"));
    text_->setAccessibleName(accessibleName());
    text_->setFrameShape(QFrame::NoFrame);
    text_->setOpenLinks(false);
    text_->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    text_->document()->setDocumentMargin(12);
    // It stands beside the table and belongs to the window.
    text_->viewport()->setBackgroundRole(QPalette::Window);
    layout()->addWidget(text_);
    setFocusProxy(text_);
}

void DetailsPanel::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel))
        Q_EMIT escaped();
    else
        QWidget::keyPressEvent(event);
}

void DetailsPanel::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    // The colours are part of the text.
    if (event->type() == QEvent::PaletteChange && text_ != nullptr) text_->setHtml(htmlOf(shown_, palette()));
}

}  // namespace calorivo
