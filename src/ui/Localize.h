#pragma once

#include <QString>

class QObject;
class QWidget;

// Windows are designed with captions such as "@ButtonOK"; these replace each by its text in the
// current language and apply the language's font.
void LocalizeForm(QWidget *window);
void LocalizeControl(QObject *control, const QString &fontName, double fontSize);
