#pragma once

#include <QStringList>

class QCoreApplication;
class QLocale;

namespace calorivo {

/// Has the program's texts shown in the first of the user's languages that there is: the texts themselves are
/// English, the others are compiled in. The toolkit's own texts follow where its translations are installed.
/// To be called once, before the first window, on the main thread; the application owns what is installed.
void installTranslations(QCoreApplication& application, const QLocale& locale);

/// The same for a list of languages, the preferred one first, each as in "de" or "de-AT".
void installTranslations(QCoreApplication& application, const QStringList& languages);

}  // namespace calorivo
