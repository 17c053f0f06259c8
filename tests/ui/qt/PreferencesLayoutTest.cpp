#include "PreferencesWindowFixture.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QSet>
#include <QTranslator>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

// What holds for every pane: names, mnemonics, the way of the Tab key, and room for longer languages.

namespace calorivo::test {
namespace {

/// A language whose texts are 1.6 times as long.
class LongLanguage final : public QTranslator {
  public:
    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* context, const char* text, const char* /*disambiguation*/,
                                    int /*n*/) const override {
        if (!QByteArray(context).startsWith("calorivo::")) return {};
        const QString english = QString::fromUtf8(text);
        QString longer = english;
        while (longer.size() * 5 < english.size() * 8) longer += QStringLiteral(" mmmm");
        return longer;
    }
};

class PreferencesLayoutTest : public PreferencesWindowFixture {
  protected:
    /// What the user operates in the pane that is shown.
    [[nodiscard]] static std::vector<QWidget*> controlsOf(const QWidget& pane) {
        std::vector<QWidget*> found;
        for (QWidget* const widget : pane.findChildren<QWidget*>())
            if (widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus) != 0 &&
                widget->focusProxy() == nullptr)
                found.push_back(widget);
        return found;
    }
    /// Calls `check` with each pane while it is shown.
    template <typename Check>
    void forEachPane(Check check) {
        for (int index = 0; index < panes().count(); ++index) {
            SCOPED_TRACE(index);
            window.selectTabViewItemAtIndex(index);
            QApplication::processEvents();
            check(*panes().widget(index));
        }
    }
};

TEST_F(PreferencesLayoutTest, EveryControlHasANameForProgramsAndOneForReaders) {
    start();
    forEachPane([](const QWidget& pane) {
        for (const QWidget* const control : controlsOf(pane)) {
            EXPECT_FALSE(control->objectName().isEmpty()) << control->metaObject()->className();
            EXPECT_FALSE(control->accessibleName().isEmpty()) << control->objectName().toStdString();
            EXPECT_FALSE(control->accessibleName().contains(QLatin1Char('&')))
                << control->objectName().toStdString();
        }
    });
}

TEST_F(PreferencesLayoutTest, MnemonicsAreThereAndDoNotClash) {
    start();
    assign("logFileURL", "file:///log.csv");
    forEachPane([](const QWidget& pane) {
        QSet<QString> taken;
        const auto take = [&taken](const QString& text) {
            const QString mnemonic = QKeySequence::mnemonic(text).toString();
            EXPECT_FALSE(mnemonic.isEmpty()) << text.toStdString();
            EXPECT_FALSE(taken.contains(mnemonic)) << text.toStdString();
            taken.insert(mnemonic);
        };
        for (const auto* const button : pane.findChildren<QAbstractButton*>()) take(button->text());
        for (const auto* const label : pane.findChildren<QLabel*>())
            if (label->buddy() != nullptr && label->buddy()->focusPolicy() != Qt::NoFocus &&
                qobject_cast<QAbstractButton*>(label->buddy()) == nullptr)
                take(label->text());
    });
}

TEST_F(PreferencesLayoutTest, TheTabKeyReachesEveryControlFromTopToBottom) {
    start();
    assign("logFileURL", "file:///log.csv");
    forEachPane([this](const QWidget& pane) {
        std::vector<QWidget*> expected = controlsOf(pane);
        std::erase_if(expected, [](const QWidget* control) {
            // Of a group of radio buttons the checked one is reached; the arrow keys do the rest.
            const auto* const button = qobject_cast<const QAbstractButton*>(control);
            return !control->isEnabled() ||
                   (button != nullptr && button->group() != nullptr && !button->isChecked());
        });
        const auto place = [this](const QWidget* widget) {
            const QPoint at = widget->mapTo(&window, QPoint(0, widget->height() / 2));
            return std::pair(at.y() / 12, at.x());
        };
        std::sort(expected.begin(), expected.end(),
                  [&](const QWidget* a, const QWidget* b) { return place(a) < place(b); });
        expected.front()->setFocus();
        std::vector<QWidget*> reached{expected.front()};
        while (reached.size() < expected.size()) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            reached.push_back(QApplication::focusWidget());
        }
        for (std::size_t index = 0; index < expected.size(); ++index)
            EXPECT_EQ(reached.at(index)->objectName().toStdString(),
                      expected.at(index)->objectName().toStdString());
    });
}

TEST_F(PreferencesLayoutTest, FitsASmallScreen) {
    start();
    EXPECT_LE(window.minimumSizeHint().width(), 800);
    EXPECT_LE(window.minimumSizeHint().height(), 540);
}

/// The texts of the window that do not fit where they stand.
std::string clippedTexts(const QWidget& window) {
    std::string clipped;
    for (const auto* const label : window.findChildren<QLabel*>()) {
        if (!label->isVisible() || label->text().isEmpty()) continue;
        const bool fits = label->width() >= label->minimumSizeHint().width() &&
                          label->height() >= label->heightForWidth(label->width());
        if (!fits) clipped += label->text().toStdString() + "\n";
    }
    for (const auto* const button : window.findChildren<QAbstractButton*>()) {
        const bool fits = button->width() >= button->sizeHint().width();
        if (button->isVisible() && !fits) clipped += button->text().toStdString() + "\n";
    }
    return clipped;
}

TEST_F(PreferencesLayoutTest, LongerTextsFit) {
    LongLanguage language;
    QApplication::installTranslator(&language);
    start();
    PreferencesWindow longWindow(settings);
    longWindow.attach(delegate(), ports);
    longWindow.show();
    for (int index = 0; index < panes().count(); ++index) {
        longWindow.selectTabViewItemAtIndex(index);
        QApplication::processEvents();
        EXPECT_EQ(clippedTexts(longWindow), "");
    }
    QApplication::removeTranslator(&language);
}

}  // namespace
}  // namespace calorivo::test
