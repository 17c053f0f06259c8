#include "ui/qt/Translations.h"

#include <QCoreApplication>
#include <QLocale>
#include <QString>
#include <QStringList>
#include <QTranslator>
#include <gtest/gtest.h>

namespace calorivo {
namespace {

/// What a text of the menus reads once the translations are installed; they are gone
/// afterwards.
template <typename Wish>
QString fileMenuIn(const Wish& wish) {
    QCoreApplication& application = *QCoreApplication::instance();
    installTranslations(application, wish);
    QString text = QCoreApplication::translate("Menus", "&File");
    for (QTranslator* translator : application.findChildren<QTranslator*>()) delete translator;
    return text;
}

TEST(Translations, AreThoseOfTheLanguageWhateverTheCountry) {
    EXPECT_EQ(fileMenuIn(QLocale(QLocale::German, QLocale::Germany)), QStringLiteral("&Datei"));
    EXPECT_EQ(fileMenuIn(QLocale(QLocale::German, QLocale::Austria)), QStringLiteral("&Datei"));
    EXPECT_EQ(fileMenuIn(QLocale(QLocale::French, QLocale::Canada)), QStringLiteral("&Fichier"));
}

TEST(Translations, LeaveTheTextsAsTheyAreInEnglishAndInALanguageThatIsMissing) {
    EXPECT_EQ(fileMenuIn(QLocale(QLocale::English, QLocale::UnitedKingdom)), QStringLiteral("&File"));
    EXPECT_EQ(fileMenuIn(QLocale::c()), QStringLiteral("&File"));
    EXPECT_EQ(fileMenuIn(QLocale(QLocale::Finnish, QLocale::Finland)), QStringLiteral("&File"));
}

TEST(Translations, AreInTheFirstLanguageOfTheUsersListThatThereIs) {
    EXPECT_EQ(fileMenuIn(QStringList{QStringLiteral("fi-FI"), QStringLiteral("fr"), QStringLiteral("de")}),
              QStringLiteral("&Fichier"));
    EXPECT_EQ(fileMenuIn(QStringList{QStringLiteral("en-GB"), QStringLiteral("de")}),
              QStringLiteral("&File"));
    EXPECT_EQ(fileMenuIn(QStringList()), QStringLiteral("&File"));
}

}  // namespace
}  // namespace calorivo
