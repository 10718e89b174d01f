#include "platform/ToolbarCustomize.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QToolBar>
#include <QVBoxLayout>

namespace platform {

namespace {
QString etichetta(const QAction* a)
{
    if (a->isSeparator())
        return QStringLiteral("──── separatore ────");
    return a->toolTip().isEmpty() ? a->objectName() : a->toolTip();
}
} // namespace

ToolbarCustomize::ToolbarCustomize(QToolBar* toolbar, QWidget* parent) : QDialog(parent), toolbar_(toolbar)
{
    setObjectName(QStringLiteral("ToolbarCustomize"));
    setWindowTitle(QStringLiteral("Personalizza barra degli strumenti"));
    original_ = toolbar->actions();
    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("lst_Pulsanti"));
    list_->setIconSize(QSize(24, 24));
    riempi(original_, false);

    auto* su = new QPushButton(QStringLiteral("Sposta su"), this);
    su->setObjectName(QStringLiteral("cmd_Su"));
    auto* giu = new QPushButton(QStringLiteral("Sposta giù"), this);
    giu->setObjectName(QStringLiteral("cmd_Giu"));
    auto* reset = new QPushButton(QStringLiteral("Ripristina"), this);
    reset->setObjectName(QStringLiteral("cmd_Ripristina"));
    connect(su, &QPushButton::clicked, this, [this]() { sposta(-1); });
    connect(giu, &QPushButton::clicked, this, [this]() { sposta(1); });
    connect(reset, &QPushButton::clicked, this, &ToolbarCustomize::ripristina);

    auto* side = new QVBoxLayout;
    side->addWidget(su);
    side->addWidget(giu);
    side->addSpacing(12);
    side->addWidget(reset);
    side->addStretch();
    auto* middle = new QHBoxLayout;
    middle->addWidget(list_, 1);
    middle->addLayout(side);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Annulla"));
    connect(buttons, &QDialogButtonBox::accepted, this, &ToolbarCustomize::applica);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Spunta i pulsanti da mostrare e ordinali con i tasti a destra."), this));
    layout->addLayout(middle);
    layout->addWidget(buttons);
    resize(420, 480);
}

void ToolbarCustomize::riempi(const QList<QAction*>& order, bool allVisible)
{
    list_->clear();
    for (QAction* a : order) {
        auto* item = new QListWidgetItem(a->icon(), etichetta(a), list_);
        item->setData(Qt::UserRole, QVariant::fromValue(static_cast<QObject*>(a)));
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(allVisible || a->isVisible() ? Qt::Checked : Qt::Unchecked);
    }
    list_->setCurrentRow(0);
}

void ToolbarCustomize::sposta(int delta)
{
    const int row = list_->currentRow();
    const int target = row + delta;
    if (row < 0 || target < 0 || target >= list_->count())
        return;
    QListWidgetItem* item = list_->takeItem(row);
    list_->insertItem(target, item);
    list_->setCurrentRow(target);
}

void ToolbarCustomize::ripristina()
{
    // The order in which the buttons were created is the order of their object tree.
    QList<QAction*> creation;
    for (QObject* child : toolbar_->children())
        if (auto* a = qobject_cast<QAction*>(child); a && original_.contains(a))
            creation << a;
    for (QAction* a : original_)
        if (!creation.contains(a))
            creation << a;
    riempi(creation, true);
}

void ToolbarCustomize::applica()
{
    QList<QAction*> order;
    for (int i = 0; i < list_->count(); ++i) {
        auto* a = static_cast<QAction*>(list_->item(i)->data(Qt::UserRole).value<QObject*>());
        a->setVisible(list_->item(i)->checkState() == Qt::Checked);
        order << a;
    }
    for (QAction* a : order)
        toolbar_->removeAction(a);
    toolbar_->addActions(order);
    accept();
}

} // namespace platform
