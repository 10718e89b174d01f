#pragma once
// The drive, folder and file lists of the original controls, and a list whose
// items are ticked with a click.
#include <QComboBox>
#include <QListWidget>
#include <QTreeWidget>

namespace platform {

// The places a folder list starts from. On Linux: the file system's root,
// the home folder, and the media mounted under /media, /mnt and /run/media.
class DriveList final : public QComboBox {
    Q_OBJECT
    Q_PROPERTY(QString Drive READ Drive WRITE SetDrive NOTIFY Change)
public:
    explicit DriveList(QWidget* parent = nullptr);
    QString Drive() const;
    // Chooses the entry that holds this path (the longest that does) and fires Change.
    void SetDrive(const QString& path);
    // The same without firing Change, to show where a folder list already is.
    void ShowDriveOf(const QString& path);
    static QStringList Drives();

    void showPopup() override;

signals:
    void Change();

private:
    void fill();
    int indexOf(const QString& path) const;

    QString shown_; // the drive of the last change
};

// A folder, the folders above it and the folders in it. Double click or Enter opens one.
class DirList final : public QTreeWidget {
    Q_OBJECT
    Q_PROPERTY(QString Path READ Path WRITE SetPath NOTIFY Change)
public:
    explicit DirList(QWidget* parent = nullptr);
    QString Path() const { return path_; }
    // Moves to the folder (to its nearest existing ancestor when it is gone) and fires Change.
    void SetPath(const QString& path);

signals:
    void Change();

protected:
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;

private:
    void fill();
    QString path_;
};

// The files of a folder that match a pattern ("*.csv", several separated by ';'),
// by name without regard to case.
class FileList final : public QListWidget {
    Q_OBJECT
    Q_PROPERTY(QString Path READ Path WRITE SetPath NOTIFY PathChange)
    Q_PROPERTY(QString Pattern READ Pattern WRITE SetPattern NOTIFY PatternChange)
public:
    explicit FileList(QWidget* parent = nullptr);
    QString Path() const { return path_; }
    void SetPath(const QString& path);
    QString Pattern() const { return pattern_; }
    void SetPattern(const QString& pattern);
    void Refresh();
    int ListCount() const { return count(); }
    QString List(int index) const;

signals:
    void PathChange();
    void PatternChange();

private:
    QString path_;
    QString pattern_ = QStringLiteral("*.*");
};

// A list of ticks: a click on an item or Space ticks or unticks it; Click fires
// after every change of a tick, however it was made.
class CheckList final : public QListWidget {
    Q_OBJECT
public:
    explicit CheckList(QWidget* parent = nullptr);
    void AddItem(const QString& text);
    bool Selected(int index) const;
    int SelCount() const;

signals:
    void Click();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void toggle(QListWidgetItem* item);
};

} // namespace platform
