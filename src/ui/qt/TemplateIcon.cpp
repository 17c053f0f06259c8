#include "ui/qt/TemplateIcon.h"

#include <QColor>
#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace calorivo {

namespace {

enum class Colouring { fromPalette, own };

QColor textColour(QIcon::Mode mode) {
    const QPalette palette = QGuiApplication::palette();
    switch (mode) {
        case QIcon::Disabled:
            return palette.color(QPalette::Disabled, QPalette::WindowText);
        case QIcon::Selected:
            return palette.color(QPalette::Active, QPalette::HighlightedText);
        case QIcon::Normal:
        case QIcon::Active:
            break;
    }
    return palette.color(QPalette::Active, QPalette::WindowText);
}

/// Draws one SVG file of the resources. Finished pixmaps lie in the application's pixmap cache, which forgets
/// the oldest by itself; icons of the same file share them.
class SvgIconEngine final : public QIconEngine {
  public:
    SvgIconEngine(const QString& path, Colouring colouring) : path_(path), colouring_(colouring) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const qreal ratio = painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, drawing((QSizeF(rect.size()) * ratio).toSize(), mode));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override { return drawing(size, mode); }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal) override {
        return drawing(size, mode);
    }

    [[nodiscard]] QIconEngine* clone() const override { return new SvgIconEngine(*this); }

  private:
    /// `size` in device pixels; the pixmap's own ratio is 1.
    [[nodiscard]] QPixmap drawing(const QSize& size, QIcon::Mode mode) const {
        const QColor colour = colouring_ == Colouring::fromPalette ? textColour(mode) : QColor();
        const QString key =
            QStringLiteral("%1 %2x%3 %4")
                .arg(path_)
                .arg(size.width())
                .arg(size.height())
                .arg(colouring_ == Colouring::fromPalette ? colour.name(QColor::HexArgb) : QString());
        QPixmap pixmap;
        if (QPixmapCache::find(key, &pixmap)) return pixmap;
        pixmap = rendered(size, colour);
        QPixmapCache::insert(key, pixmap);
        return pixmap;
    }

    [[nodiscard]] QPixmap rendered(const QSize& size, const QColor& colour) const {
        QSvgRenderer renderer(path_);
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        renderer.render(&painter);
        if (colouring_ == Colouring::fromPalette) {
            painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
            painter.fillRect(pixmap.rect(), colour);
        }
        return pixmap;
    }

    QString path_;
    Colouring colouring_;
};

QIcon iconOf(const QString& name, Colouring colouring) {
    const QString path = QStringLiteral(":/icons/%1.svg").arg(name);
    return QFile::exists(path) ? QIcon(new SvgIconEngine(path, colouring)) : QIcon();
}

}  // namespace

QIcon templateIcon(const QString& name) { return iconOf(name, Colouring::fromPalette); }

QIcon applicationIcon() { return iconOf(QStringLiteral("calorivo"), Colouring::own); }

}  // namespace calorivo
