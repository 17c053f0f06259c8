#pragma once

#include "app/DriveExplanation.h"
#include "app/Explanation.h"

#include <QList>
#include <QString>
#include <QWidget>

#include <optional>

class QTextBrowser;

namespace calorivo {

/// One thing that is known of a reading.
struct Fact {
    QString caption;
    QString text;
    friend bool operator==(const Fact&, const Fact&) = default;
};

struct Details {
    QString title;
    /// Without any, the title is one sentence that says why.
    QList<Fact> facts;
    friend bool operator==(const Details&, const Details&) = default;
};

/// What is known of a sensor, from the device up to the row; what is not known is left out.
[[nodiscard]] Details detailsOf(const Explanation& explanation);
/// The same of a drive, of which nothing more may be known than its row shows.
[[nodiscard]] Details detailsOfDrive(const QString& name, const QString& serial, const QString& reading,
                                     const std::optional<DriveExplanation>& explanation = std::nullopt);

/// Says where the value of the selected row comes from. Its text is made when it is shown first.
class DetailsPanel final : public QWidget {
    Q_OBJECT
  public:
    explicit DetailsPanel(QWidget* parent = nullptr);

    /// While the user has some of the text selected, only those of another title replace
    /// it.
    void show(const Details& details);
    using QWidget::show;
    /// Shows one sentence where there is nothing to explain.
    void showHint(const QString& hint);
    [[nodiscard]] QString plainText() const;
    [[nodiscard]] QSize sizeHint() const override;

  Q_SIGNALS:
    /// Escape was pressed in it.
    void escaped();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void makeText();

    QTextBrowser* text_ = nullptr;
    Details shown_;
};

}  // namespace calorivo
