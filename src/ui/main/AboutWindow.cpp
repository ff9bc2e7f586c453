#include "ui/main/AboutWindow.h"

#include "ui/main/CommandIcons.h"
#include "ui/Localize.h"
#include "app/Language.h"
#include "app/Version.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

AboutPanel::AboutPanel(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("AboutPanel"));
    auto *layout = new QVBoxLayout(this);
    auto *picture = new QLabel(this);
    picture->setPixmap(CommandIcon(QStringLiteral("orvana")).pixmap(96, 96));
    picture->setAlignment(Qt::AlignCenter);
    layout->addWidget(picture);
    auto *name = new QLabel(QStringLiteral("@frmMain"), this);
    name->setObjectName(QStringLiteral("AboutName"));
    QFont big = name->font();
    big.setPointSizeF(big.pointSizeF() * 2);
    big.setBold(true);
    name->setFont(big);
    name->setAlignment(Qt::AlignCenter);
    layout->addWidget(name);
    auto *version = new QLabel(GetLocalizedString(QStringLiteral("AboutVersion"), QStringLiteral("Form")).arg(QLatin1String(OrvanaVersion)), this);
    version->setObjectName(QStringLiteral("AboutVersion"));
    version->setAlignment(Qt::AlignCenter);
    layout->addWidget(version);
    auto *line = new QLabel(QStringLiteral("@AboutLine"), this);
    line->setAlignment(Qt::AlignCenter);
    line->setWordWrap(true);
    layout->addWidget(line);
    LocalizeForm(this);
}

AboutWindow::AboutWindow(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("@About"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(new AboutPanel(this));
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(QStringLiteral("@ButtonClose"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    LocalizeForm(this);
}
