#include "platform/qt/QtSuppressibleAlertPanel.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>

namespace calorivo {
namespace {

const SuppressibleAlert question{
    .message = "Move <b>&it</b>?",
    .informativeText = "Because & so",
    .firstButton = {"Move & run"},
    .secondButton = {"Do Not Move", "\x1B"},
    .suppressionButton = SuppressionButton{true, ControlSize::small, ControlSize::small}};

/// What came of the question when `act` did something with its box.
SuppressibleAlertAnswer answerTo(const SuppressibleAlert& alert,
                                 const std::function<void(QMessageBox&)>& act) {
    QTimer::singleShot(0, qApp, [&act] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        act(*box);
    });
    return QtSuppressibleAlertPanel().runModal(alert);
}

void click(const QMessageBox& box, const char* name) {
    auto* const button = box.findChild<QAbstractButton*>(QLatin1String(name));
    ASSERT_NE(button, nullptr) << name;
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
}

TEST(QtSuppressibleAlertPanel, ShowsTextsAsTheyStandAndTheFirstButtonFirst) {
    answerTo(question, [](QMessageBox& box) {
        EXPECT_EQ(box.text(), QStringLiteral("Move <b>&it</b>?"));
        EXPECT_EQ(box.informativeText(), QStringLiteral("Because & so"));
        for (const QLabel* const label : box.findChildren<QLabel*>())
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
        EXPECT_EQ(box.defaultButton()->text(), QStringLiteral("Move && run"));
        EXPECT_EQ(box.defaultButton()->objectName(), QStringLiteral("firstButton"));
        EXPECT_TRUE(box.checkBox()->isChecked());
        EXPECT_LT(box.checkBox()->font().pointSizeF(), box.font().pointSizeF());
        box.reject();
    });
}

TEST(QtSuppressibleAlertPanel, TellsTheButtonAndTheCheckBox) {
    const auto first = answerTo(question, [](QMessageBox& box) { click(box, "firstButton"); });
    EXPECT_TRUE(first.isFirstButton);
    EXPECT_TRUE(first.isSuppressionOn);
    const auto second = answerTo(question, [](QMessageBox& box) {
        click(box, "suppressionButton");
        click(box, "secondButton");
    });
    EXPECT_FALSE(second.isFirstButton);
    EXPECT_FALSE(second.isSuppressionOn);
}

TEST(QtSuppressibleAlertPanel, TakesEscapeAndClosingForTheSecondButton) {
    const auto escaped = answerTo(question, [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_FALSE(escaped.isFirstButton);
    EXPECT_TRUE(escaped.isSuppressionOn);
    const auto closed = answerTo(question, [](QMessageBox& box) { box.close(); });
    EXPECT_FALSE(closed.isFirstButton);
}

TEST(QtSuppressibleAlertPanel, HasNoCheckBoxUnlessItIsWanted) {
    SuppressibleAlert plain = question;
    plain.suppressionButton.reset();
    const auto answer = answerTo(plain, [](QMessageBox& box) {
        EXPECT_EQ(box.checkBox(), nullptr);
        click(box, "secondButton");
    });
    EXPECT_FALSE(answer.isFirstButton);
    EXPECT_FALSE(answer.isSuppressionOn);
}

TEST(QtSuppressibleAlertPanel, AnswersTheSecondWhenTheBoxGoes) {
    const auto answer = answerTo(question, [](QMessageBox& box) { box.deleteLater(); });
    EXPECT_FALSE(answer.isFirstButton);
    EXPECT_FALSE(answer.isSuppressionOn);
}

}  // namespace
}  // namespace calorivo
