#include "ui/qt/Translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QString>
#include <QTranslator>

#include <memory>

namespace calorivo {

namespace {

/// The file's name without language and suffix, and the folder that holds one for each language.
void install(QCoreApplication& application, const QStringList& languages, const QString& name,
             const QString& folder) {
    for (QString language : languages) {
        // No file is needed for English, and a later language must not be taken for want of one.
        if (QLocale(language).language() == QLocale::English) return;
        auto translator = std::make_unique<QTranslator>();
        if (!translator->load(name + QLatin1Char('_') + language.replace(QLatin1Char('-'), QLatin1Char('_')),
                              folder))
            continue;
        translator->setParent(&application);
        QCoreApplication::installTranslator(translator.release());
        return;
    }
}

}  // namespace

void installTranslations(QCoreApplication& application, const QLocale& locale) {
    installTranslations(application, locale.uiLanguages());
}

void installTranslations(QCoreApplication& application, const QStringList& languages) {
    install(application, languages, QStringLiteral("qtbase"),
            QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    install(application, languages, QStringLiteral("calorivo"), QStringLiteral(":/translations"));
}

}  // namespace calorivo
