#include "platform/qt/QtAlertPanel.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QStringList>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>
#include <string>

namespace calorivo {
namespace {

const Alert question{"Launch <b>&amp;</b> on 50% Startup", "&Yes", "No", "Later && more",
                     "First line.\n\n<i>Second</i> line."};

QMessageBox* shownAlert() { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); }

/// Runs the alert, and this as soon as it is shown.
AlertAnswer run(const Alert& alert, const std::function<void(QMessageBox&)>& use) {
    QTimer::singleShot(0, qApp, [&use] {
        ASSERT_NE(shownAlert(), nullptr);
        use(*shownAlert());
    });
    return QtAlertPanel().runModal(alert);
}

void click(QMessageBox& box, const char* name) {
    QTest::mouseClick(box.findChild<QPushButton*>(QLatin1String(name)), Qt::LeftButton);
}

void pressEscape(QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); }

TEST(QtAlertPanel, ShowsTheTextsAsTheyStand) {
    run(question, [](QMessageBox& box) {
        EXPECT_EQ(box.objectName(), QStringLiteral("alert"));
        EXPECT_EQ(box.text().toStdString(), question.message);
        EXPECT_EQ(box.informativeText().toStdString(), question.informativeText);
        for (const QLabel* const label : box.findChildren<QLabel*>())
            EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->objectName().toStdString();
        EXPECT_TRUE(box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))->font().bold());
        EXPECT_EQ(box.windowModality(), Qt::ApplicationModal);
        pressEscape(box);
    });
}

TEST(QtAlertPanel, ShowsTheButtonsInTheirOrder) {
    run(question, [](QMessageBox& box) {
        QList<QPushButton*> buttons = box.findChildren<QPushButton*>();
        std::sort(buttons.begin(), buttons.end(), [](const QPushButton* one, const QPushButton* other) {
            return one->mapToGlobal(QPoint()).x() < other->mapToGlobal(QPoint()).x();
        });
        QStringList texts;
        for (const QPushButton* const button : buttons) texts.append(button->text());
        EXPECT_EQ(texts, (QStringList{QStringLiteral("&&Yes"), QStringLiteral("No"),
                                      QStringLiteral("Later &&&& more")}));
        EXPECT_EQ(box.defaultButton(), buttons.front());
        pressEscape(box);
    });
}

TEST(QtAlertPanel, AnswersWithTheButtonThatWasClicked) {
    EXPECT_EQ(run(question, [](QMessageBox& box) { click(box, "defaultButton"); }),
              AlertAnswer::defaultButton);
    EXPECT_EQ(run(question, [](QMessageBox& box) { click(box, "alternateButton"); }),
              AlertAnswer::alternateButton);
    EXPECT_EQ(run(question, [](QMessageBox& box) { click(box, "otherButton"); }), AlertAnswer::otherButton);
    EXPECT_EQ(run({.message = "Normal Mode", .defaultButton = "OK"},
                  [](QMessageBox& box) { click(box, "defaultButton"); }),
              AlertAnswer::defaultButton);
}

TEST(QtAlertPanel, ReturnIsTheDefaultButton) {
    EXPECT_EQ(run(question, [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); }),
              AlertAnswer::defaultButton);
}

TEST(QtAlertPanel, ClosingItIsTheAlternateAnswer) {
    const Alert single{.message = "Normal Mode", .defaultButton = "OK"};
    for (const Alert& alert : {question, single}) {
        SCOPED_TRACE(alert.message);
        EXPECT_EQ(run(alert, pressEscape), AlertAnswer::alternateButton);
        EXPECT_EQ(run(alert, [](QMessageBox& box) { box.close(); }), AlertAnswer::alternateButton);
    }
}

TEST(QtAlertPanel, AnAlertMayBeShownOverAnother) {
    AlertAnswer inner = AlertAnswer::otherButton;
    const AlertAnswer outer = run(question, [&inner](QMessageBox& box) {
        inner = run({.message = "Inner", .defaultButton = "OK"}, [](QMessageBox& other) {
            EXPECT_EQ(other.text(), QStringLiteral("Inner"));
            click(other, "defaultButton");
        });
        EXPECT_EQ(shownAlert(), &box);
        click(box, "otherButton");
    });
    EXPECT_EQ(inner, AlertAnswer::defaultButton);
    EXPECT_EQ(outer, AlertAnswer::otherButton);
}

TEST(QtAlertPanel, OutlivesTheWindowThatItStandsOver) {
    auto window = std::make_unique<QWidget>();
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    EXPECT_EQ(run(question,
                  [&window](const QMessageBox& box) {
                      EXPECT_EQ(box.parentWidget(), window.get());
                      window.reset();
                  }),
              AlertAnswer::alternateButton);
}

TEST(QtAlertPanel, StandsInTheMiddleOfTheActiveWindow) {
    QWidget window;
    window.setGeometry(50, 60, 700, 500);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    run(question, [&window](QMessageBox& box) {
        const QPoint distance = box.frameGeometry().center() - window.frameGeometry().center();
        constexpr int fewPixels = 20;
        EXPECT_LE(distance.manhattanLength(), fewPixels);
        pressEscape(box);
    });
}

TEST(QtAlertPanel, ShowsTheProgramsIcon) {
    QPixmap pixmap(128, 128);
    pixmap.fill(Qt::red);
    QApplication::setWindowIcon(QIcon(pixmap));
    run(question, [](QMessageBox& box) {
        EXPECT_EQ(box.iconPixmap().size(), QSize(64, 64));
        pressEscape(box);
    });
    QApplication::setWindowIcon({});
    run(question, [](QMessageBox& box) {
        EXPECT_EQ(box.icon(), QMessageBox::Information);
        pressEscape(box);
    });
}

TEST(QtAlertPanel, ClosingItDoesNotEndAProgramWithoutWindows) {
    bool isEnding = false;
    QObject context;
    QObject::connect(qApp, &QGuiApplication::lastWindowClosed, &context, [&isEnding] { isEnding = true; });
    run(question, [](QMessageBox& box) { box.close(); });
    QCoreApplication::processEvents();
    EXPECT_FALSE(isEnding);
}

}  // namespace
}  // namespace calorivo
