// main() for the tests that need an application object: they run on no screen, in the style that looks the
// same everywhere.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QStringList>

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    return RUN_ALL_TESTS();
}
