#pragma once
// The customise dialog of a toolbar: which buttons show, and in which order.
#include <QDialog>

class QListWidget;
class QToolBar;

namespace platform {

class ToolbarCustomize final : public QDialog {
    Q_OBJECT
public:
    ToolbarCustomize(QToolBar* toolbar, QWidget* parent = nullptr);
    QListWidget* List() const { return list_; }

private slots:
    void sposta(int delta);
    void ripristina();
    void applica();

private:
    void riempi(const QList<QAction*>& order, bool allVisible);
    QToolBar* toolbar_;
    QListWidget* list_;
    QList<QAction*> original_;
};

} // namespace platform
