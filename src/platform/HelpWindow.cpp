#include "platform/HelpWindow.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace platform {

HelpWindow::HelpWindow(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("HelpWindow"));
    setWindowTitle(QStringLiteral("Quorvel - Guida"));
    browser_ = new QTextBrowser(this);
    browser_->setObjectName(QStringLiteral("txt_Guida"));
    browser_->setSearchPaths({QStringLiteral(":/help")});
    browser_->setOpenLinks(true);
    auto* indietro = new QPushButton(QStringLiteral("Indietro"), this);
    auto* indice = new QPushButton(QStringLiteral("Sommario"), this);
    connect(indietro, &QPushButton::clicked, browser_, &QTextBrowser::backward);
    connect(indice, &QPushButton::clicked, this, [this]() { ShowPage(); });
    auto* bar = new QHBoxLayout;
    bar->addWidget(indice);
    bar->addWidget(indietro);
    bar->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(browser_);
    resize(720, 560);
}

void HelpWindow::ShowPage(const QString& page)
{
    browser_->setSource(QUrl(page));
    show();
    raise();
    activateWindow();
}

QString HelpWindow::CurrentPage() const { return browser_->source().toString(); }

} // namespace platform
