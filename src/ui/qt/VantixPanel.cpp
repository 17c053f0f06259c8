#include "ui/qt/VantixPanel.h"

#include <QEvent>
#include <QFont>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace calorivo {

namespace {

QString shown(const std::string& text) { return QString::fromStdString(text); }

/// A text as it stands: no character of it makes a shortcut.
QString buttonText(const std::string& text) {
    return shown(text).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

QLabel* textLabel(const QString& name) {
    auto* const label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QFont larger(QFont font) {
    constexpr double factor = 1.4;
    font.setPointSizeF(font.pointSizeF() * factor);
    return font;
}

/// The y of the path goes upwards, the painter's goes downwards.
class PathPainter {
  public:
    explicit PathPainter(double height) : height_(height) {}

    void operator()(const Path::Move& move) { path_.moveTo(move.to.x, height_ - move.to.y); }
    void operator()(const Path::Line& line) { path_.lineTo(line.to.x, height_ - line.to.y); }
    void operator()(const Path::Arc& arc) {
        const QRectF circle(arc.center.x - arc.radius, height_ - arc.center.y - arc.radius, 2 * arc.radius,
                            2 * arc.radius);
        // Clockwise, the short way: from 0° to 270° is a quarter too.
        constexpr double quarter = -90.0;
        path_.arcTo(circle, arc.startAngle, quarter);
    }
    void operator()(const Path::Close& /*close*/) { path_.closeSubpath(); }
    [[nodiscard]] const QPainterPath& path() const { return path_; }

  private:
    double height_;
    QPainterPath path_;
};

QColor mixed(const QColor& a, const QColor& b, double share) {
    const auto channel = [share](double from, double to) { return from + (to - from) * share; };
    return QColor::fromRgbF(static_cast<float>(channel(a.redF(), b.redF())),
                            static_cast<float>(channel(a.greenF(), b.greenF())),
                            static_cast<float>(channel(a.blueF(), b.blueF())));
}

}  // namespace

VantixPanel::VantixPanel(QWidget* parent)
    : QWidget(parent),
      title_(textLabel(QStringLiteral("promotionTitle"))),
      text_(textLabel(QStringLiteral("promotionText"))),
      learnMore_(new QPushButton),
      close_(new QToolButton) {
    constexpr int margin = 14;
    setObjectName(QStringLiteral("vantixPromoView"));
    QFont bold = title_->font();
    bold.setBold(true);
    title_->setFont(bold);
    learnMore_->setObjectName(QStringLiteral("promotionLearnMore"));
    learnMore_->setAutoDefault(false);
    close_->setObjectName(QStringLiteral("promotionClose"));
    close_->setText(QStringLiteral("×"));
    close_->setFont(larger(close_->font()));
    close_->setAutoRaise(true);

    auto* const texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(title_);
    texts->addWidget(text_);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(margin, margin / 2 + 1, margin / 2, margin / 2 + 1);
    row->addLayout(texts, 1);
    row->addWidget(learnMore_, 0, Qt::AlignVCenter);
    row->addWidget(close_, 0, Qt::AlignVCenter);
    connect(learnMore_, &QPushButton::clicked, this, &VantixPanel::learnMoreWanted);
    connect(close_, &QToolButton::clicked, this, &VantixPanel::closeWanted);
    showColours();
}

void VantixPanel::setTexts(const PromotionTexts& texts) {
    constexpr int besideText = 12;
    title_->setText(shown(texts.panelTitle));
    text_->setText(shown(texts.panelText));
    learnMore_->setText(buttonText(texts.learnMoreButton));
    learnMore_->setMinimumWidth(learnMore_->sizeHint().width() + besideText);
    close_->setToolTip(shown(texts.closeButton));
    close_->setAccessibleName(shown(texts.closeButton));
    setAccessibleName(shown(texts.panelTitle));
}

void VantixPanel::setRoundedCorners(CornerMask corners) {
    corners_.setRoundedCorners(corners);
    update();
}

void VantixPanel::paintEvent(QPaintEvent* /*event*/) {
    // The whole panel, whatever part is to be redrawn: its outline is the panel's, not the part's.
    const Rectangle bounds{0, 0, static_cast<double>(width()), static_cast<double>(height())};
    const auto drawing = corners_.drawRect(bounds, bounds);
    if (!drawing) return;
    PathPainter outline(bounds.height);
    for (const Path::Segment& segment : drawing->outline.segments) std::visit(outline, segment);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor window = palette().color(QPalette::Window);
    painter.setBrush(mixed(window, palette().color(QPalette::Highlight), 0.08));
    painter.setPen(QPen(mixed(window, palette().color(QPalette::WindowText), 0.2), drawing->lineWidth));
    painter.drawPath(outline.path());
}

void VantixPanel::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) showColours();
    QWidget::changeEvent(event);
}

/// The text steps back behind its title, still well readable.
void VantixPanel::showColours() {
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText,
                     mixed(palette().color(QPalette::WindowText), palette().color(QPalette::Window), 0.25));
    text_->setPalette(colours);
}

}  // namespace calorivo
