#pragma once
// The forms registry: one global instance per window, created at first use,
// and the loaded windows in the order they were loaded.
#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>

namespace platform {

class Forms {
public:
    static void Register(QWidget* form);
    static bool IsLoaded(const QWidget* form);
    static QList<QWidget*> Loaded();
    static QWidget* Find(const QString& name);
    // Closes and destroys a loaded window; nothing when it isn't loaded.
    static void Unload(const QString& name);
    static void UnloadAll();
};

// The global instance of a window class, created (and registered) at first use.
template <class T, class... Args>
T* Form(Args&&... args)
{
    static QPointer<T> instance;
    if (!instance || !Forms::IsLoaded(instance.data())) {
        instance = new T(std::forward<Args>(args)...);
        Forms::Register(instance.data());
    }
    return instance.data();
}

} // namespace platform
