#pragma once

#include "app/Configuration.h"
#include "platform/AttributedString.h"

#include <QLabel>
#include <QPalette>
#include <QWidget>

#include <string>

QT_BEGIN_NAMESPACE
class QAction;
class QEvent;
QT_END_NAMESPACE

namespace calorivo {

class Actions;

/// The text as rich text. The colours are those of the text, made lighter where the palette's background
/// would swallow them.
[[nodiscard]] QString richText(const AttributedString& text, const QPalette& palette);

/// An action as a link: following it triggers the action.
class ThankYouLink final : public QLabel {
    Q_OBJECT

  public:
    /// `url` is what the link shows as its target. The action must outlive this label.
    ThankYouLink(QAction& action, const std::string& url, QWidget* parent);

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void showText();

    AttributedString text_;
};

/// The ways to stay in touch with the makers, as a column of links.
class ThankYouLinks final : public QWidget {
    Q_OBJECT

  public:
    /// The actions must outlive this widget.
    ThankYouLinks(Actions& actions, const LinkTargets& targets, QWidget* parent);
};

}  // namespace calorivo
