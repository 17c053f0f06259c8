#include "ui/qt/ThankYouLinks.h"

#include "ui/Hyperlink.h"
#include "ui/qt/Actions.h"
#include "ui/qt/PaneForm.h"

#include <QAction>
#include <QColor>
#include <QEvent>
#include <QVBoxLayout>

#include <array>
#include <cmath>
#include <string_view>

namespace calorivo {

namespace {

/// How bright a colour is to the eye, from 0 to 1.
double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other) {
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return a > b ? a / b : b / a;
}

QColor readableOn(const QColor& background, const Color& color) {
    constexpr double easyToRead = 4.5;
    constexpr float step = 0.05F;
    QColor readable = QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                                       static_cast<float>(color.blue));
    const bool isDark = luminance(background) < 0.5;
    while (isDark && contrast(readable, background) < easyToRead && readable.lightnessF() < 1.0F - step)
        readable.setHslF(readable.hslHueF(), readable.hslSaturationF(), readable.lightnessF() + step);
    return readable;
}

QString utf8(std::string_view bytes) {
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

QString styled(const QString& text, const TextAttributes& attributes, const QColor& background) {
    QString style;
    if (attributes.foregroundColor)
        style += QStringLiteral("color:%1;").arg(readableOn(background, *attributes.foregroundColor).name());
    if (attributes.underlineStyle)
        style += *attributes.underlineStyle == UnderlineStyle::single
                     ? QStringLiteral("text-decoration:underline;")
                     : QStringLiteral("text-decoration:none;");
    const QString inside = QStringLiteral("<span style=\"%1\">%2</span>").arg(style, text.toHtmlEscaped());
    if (!attributes.link) return inside;
    return QStringLiteral("<a href=\"%1\">%2</a>").arg(utf8(*attributes.link).toHtmlEscaped(), inside);
}

}  // namespace

QString richText(const AttributedString& text, const QPalette& palette) {
    const std::string_view bytes = text.text;
    QString html;
    std::size_t done = 0;
    for (const AttributedString::Run& run : text.runs) {
        html += utf8(bytes.substr(done, run.range.location - done)).toHtmlEscaped();
        html += styled(utf8(bytes.substr(run.range.location, run.range.length)), run.attributes,
                       palette.color(QPalette::Window));
        done = run.range.location + run.range.length;
    }
    return html + utf8(bytes.substr(done)).toHtmlEscaped();
}

ThankYouLink::ThankYouLink(QAction& action, const std::string& url, QWidget* parent) : QLabel(parent) {
    const QString shown = spokenText(action.text());
    text_ = Hyperlink::hyperlinkFromStringStartingAtIndexWithURL(shown.toStdString(), 0, url);
    setObjectName(action.objectName() + QLatin1String("Link"));
    setAccessibleName(shown);
    setTextFormat(Qt::RichText);
    setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    setToolTip(utf8(url));
    // The action knows how to open it; the label itself opens nothing.
    setOpenExternalLinks(false);
    connect(this, &QLabel::linkActivated, &action, &QAction::trigger);
    showText();
}

void ThankYouLink::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) showText();
    QLabel::changeEvent(event);
}

void ThankYouLink::showText() { setText(richText(text_, palette())); }

ThankYouLinks::ThankYouLinks(Actions& actions, const LinkTargets& targets, QWidget* parent)
    : QWidget(parent) {
    struct Link {
        QAction* action;
        std::string url;
    };
    const std::array links{Link{actions.help, std::string(targets.supportPage)},
                           Link{actions.feedback, "mailto:" + std::string(targets.supportMailbox)},
                           Link{actions.rate, std::string(targets.storeProductPage)},
                           Link{actions.follow, std::string(targets.socialPage)},
                           Link{actions.newsletter, std::string(targets.newsletterPage)},
                           Link{actions.moreApps, std::string(targets.storeArtistPage)}};
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    for (const Link& link : links) column->addWidget(new ThankYouLink(*link.action, link.url, this));
}

}  // namespace calorivo
