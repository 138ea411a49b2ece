#pragma once

#include <QString>

class QWidget;

/// Where the guide for performers lies on this PC, in the language @p language ("lang_de"; Italian where there is none
/// in it): an absolute path to a page, beside the program or where a package puts documents. Empty when it is not
/// installed.
QString guidePath(const QString &language);

/// From here on the help key (F1) pressed in @p window opens the guide in the user's browser, in the language of the
/// interface; a box says so where there is none to open.
void openGuideByKey(QWidget *window);
