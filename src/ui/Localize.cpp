#include "ui/Localize.h"

#include "app/Language.h"
#include "app/Settings.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QToolButton>
#include <QWidget>

namespace {

const QString FormSection = QStringLiteral("Form");

bool IsPlaceholder(const QString &text)
{
    return text.startsWith(u'@');
}

QString Translated(const QString &text, const QString &section)
{
    return IsPlaceholder(text) ? GetLocalizedString(text.mid(1), section) : text;
}

void ApplyFont(QWidget *widget, const QString &fontName, double fontSize)
{
    if (fontName.isEmpty() && fontSize == 0)
        return;
    QFont font = widget->font();
    if (!fontName.isEmpty())
        font.setFamily(fontName);
    if (fontSize != 0)
        font.setPointSizeF(fontSize);
    widget->setFont(font);
}

template <typename Widget, typename Getter, typename Setter>
void TranslateText(Widget *widget, Getter get, Setter set, const QString &section)
{
    const QString text = (widget->*get)();
    if (IsPlaceholder(text))
        (widget->*set)(Translated(text, section));
}

void TranslateToolTip(QWidget *widget)
{
    TranslateText(widget, &QWidget::toolTip, &QWidget::setToolTip, FormSection);
}

} // namespace

void LocalizeControl(QObject *control, const QString &fontName, double fontSize)
{
    // Menus and their entries: captions from "Menu", the font left alone.
    if (auto *action = qobject_cast<QAction *>(control)) {
        TranslateText(action, &QAction::text, &QAction::setText, QStringLiteral("Menu"));
        return;
    }
    auto *widget = qobject_cast<QWidget *>(control);
    if (!widget)
        return;

    if (auto *label = qobject_cast<QLabel *>(widget)) {
        TranslateText(label, &QLabel::text, &QLabel::setText, FormSection);
        ApplyFont(label, fontName, fontSize);
        TranslateToolTip(label); // labels also stand in for pictures
    } else if (auto *group = qobject_cast<QGroupBox *>(widget)) {
        TranslateText(group, &QGroupBox::title, &QGroupBox::setTitle, FormSection);
        ApplyFont(group, fontName, fontSize);
    } else if (auto *button = qobject_cast<QAbstractButton *>(widget)) {
        // Check boxes, radio buttons, push and tool buttons.
        TranslateText(button, &QAbstractButton::text, &QAbstractButton::setText, FormSection);
        ApplyFont(button, fontName, fontSize);
        if (qobject_cast<QToolButton *>(button) || button->inherits("QPushButton"))
            TranslateToolTip(button);
    } else if (auto *line = qobject_cast<QLineEdit *>(widget)) {
        TranslateText(line, &QLineEdit::text, &QLineEdit::setText, FormSection);
        ApplyFont(line, fontName, fontSize);
        TranslateToolTip(line);
    } else if (auto *text = qobject_cast<QTextEdit *>(widget)) {
        TranslateText(text, &QTextEdit::toPlainText, &QTextEdit::setPlainText, FormSection);
        ApplyFont(text, fontName, fontSize);
        TranslateToolTip(text);
    } else if (auto *plain = qobject_cast<QPlainTextEdit *>(widget)) {
        TranslateText(plain, &QPlainTextEdit::toPlainText, &QPlainTextEdit::setPlainText, FormSection);
        ApplyFont(plain, fontName, fontSize);
        TranslateToolTip(plain);
    }
}

void LocalizeForm(QWidget *window)
{
    const QString fontName = GetLocalizedString(QStringLiteral("FontName"), QStringLiteral("System"));
    const QString sizeText = GetLocalizedString(QStringLiteral("FontSize"), QStringLiteral("System"));
    const double fontSize = sizeText == QLatin1String("FontSize") ? 0 : SettingNumber(sizeText);
    const QString fontFamily = fontName == QLatin1String("FontName") ? QString() : fontName;

    if (IsPlaceholder(window->windowTitle()))
        window->setWindowTitle(Translated(window->windowTitle(), FormSection));
    for (QObject *control : window->findChildren<QObject *>())
        LocalizeControl(control, fontFamily, fontSize);
}
