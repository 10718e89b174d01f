#include "platform/Forms.h"

#include <QMdiSubWindow>

namespace platform {

namespace {
QList<QPointer<QWidget>>& registry()
{
    static QList<QPointer<QWidget>> list;
    return list;
}
void prune()
{
    registry().removeIf([](const QPointer<QWidget>& p) { return p.isNull(); });
}
} // namespace

void Forms::Register(QWidget* form)
{
    prune();
    if (!IsLoaded(form))
        registry().append(form);
}

bool Forms::IsLoaded(const QWidget* form)
{
    for (const auto& p : registry())
        if (p.data() == form)
            return true;
    return false;
}

QList<QWidget*> Forms::Loaded()
{
    prune();
    QList<QWidget*> out;
    for (const auto& p : registry())
        out.append(p.data());
    return out;
}

QWidget* Forms::Find(const QString& name)
{
    for (QWidget* w : Loaded())
        if (w->objectName() == name)
            return w;
    return nullptr;
}

void Forms::Unload(const QString& name)
{
    QWidget* w = Find(name);
    if (!w)
        return;
    registry().removeIf([w](const QPointer<QWidget>& p) { return p.data() == w; });
    QWidget* target = w;
    if (auto* sub = qobject_cast<QMdiSubWindow*>(w->parentWidget()))
        target = sub;
    target->hide();
    // Deferred: the window may be the one whose handler is running.
    target->deleteLater();
}

void Forms::UnloadAll()
{
    for (QWidget* w : Loaded())
        Unload(w->objectName());
}

} // namespace platform
