#include "guide.h"

#include "app/shared/questionbox.h"
#include "language.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QShortcut>
#include <QUrl>

namespace {

/// The context of its texts.
class Guide
{
    Q_DECLARE_TR_FUNCTIONS(Guide)
};

void openGuide(QWidget *window)
{
    const QString path = guidePath(storedLanguage());
    if (path.isEmpty() || !QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        tellUser(window, QMessageBox::Information, Guide::tr("Guida"),
                 Guide::tr("La guida non si trova su questo PC."));
}

} // namespace

QString guidePath(const QString &language)
{
    const QString program = QCoreApplication::applicationDirPath();
    // Beside the program as on Windows, where a package of Linux puts it, and in the sources it was built from.
    for (const QString &folder :
         {program + QStringLiteral("/guide/"), program + QStringLiteral("/../share/doc/corvin4manager/guide/"),
          program + QStringLiteral("/../../../docs/guide/")}) {
        for (const QString &code : {language.right(2), QStringLiteral("it")}) {
            const QFileInfo page(folder + code + QStringLiteral(".html"));
            if (page.isFile())
                return page.canonicalFilePath();
        }
    }
    return {};
}

void openGuideByKey(QWidget *window)
{
    const auto *key = new QShortcut(QKeySequence(QKeySequence::HelpContents), window);
    QObject::connect(key, &QShortcut::activated, window, [window] { openGuide(window); });
}
