#include "ui/manager/PreviewPane.h"

#include "app/Language.h"
#include "library/AlbumPreview.h"

#include <QFormLayout>
#include <QLabel>

namespace {

QString FormText(const char *key)
{
    return GetLocalizedString(QString::fromLatin1(key), QStringLiteral("Form"));
}

} // namespace

PreviewPane::PreviewPane(QWidget *parent)
    : QWidget(parent), title(new QLabel), identification(new QLabel), number(new QLabel), size(new QLabel), dates(new QLabel)
{
    setObjectName(QStringLiteral("AlbumPreview"));
    auto *layout = new QFormLayout(this);
    layout->addRow(FormText("Title"), title);
    layout->addRow(FormText("Identification"), identification);
    layout->addRow(FormText("LabelNumber"), number);
    layout->addRow(FormText("LabelSize"), size);
    layout->addRow(QString(), dates);
    for (QLabel *label : {title, identification, number, size, dates}) {
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
}

void PreviewPane::Show(const AlbumPreview &preview)
{
    title->setText(preview.title.isEmpty() ? preview.name : preview.title);
    identification->setText(preview.identification);
    number->setText(GroupedNumber(preview.photos));
    size->setText(GroupedNumber(preview.totalSize));
    const QString first = PreviewDateText(preview.firstCapture);
    const QString last = PreviewDateText(preview.lastCapture);
    dates->setText(first == last ? first : first + u'\n' + last);
}

void PreviewPane::Clear()
{
    for (QLabel *label : {title, identification, number, size, dates})
        label->clear();
}

QString PreviewPane::ShownText() const
{
    return QStringList{title->text(), identification->text(), number->text(), size->text(), dates->text()}.join(u'\n');
}
