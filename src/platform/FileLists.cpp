#include "platform/FileLists.h"

#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStorageInfo>
#include <QStyle>

namespace platform {

namespace {
bool holds(const QString& drive, const QString& path)
{
    return drive == QLatin1String("/") || path == drive || path.startsWith(drive + '/');
}
QString clean(const QString& path) { return QDir::cleanPath(QDir(path).absolutePath()); }
} // namespace

DriveList::DriveList(QWidget* parent) : QComboBox(parent)
{
    fill();
    // Picked again, the drive shown is no change: the folder list stays where it is.
    connect(this, &QComboBox::activated, this, [this]() {
        if (Drive() == shown_)
            return;
        shown_ = Drive();
        emit Change();
    });
}

QStringList DriveList::Drives()
{
    QStringList out{QStringLiteral("/")};
    const QString home = clean(QDir::homePath());
    if (home != QLatin1String("/"))
        out << home;
    QStringList media;
    for (const QStorageInfo& v : QStorageInfo::mountedVolumes()) {
        const QString root = v.rootPath();
        if (!v.isValid() || !v.isReady())
            continue;
        for (const char* under : {"/media/", "/mnt/", "/run/media/"})
            if (root.startsWith(QLatin1String(under)) && !media.contains(root))
                media << root;
    }
    media.sort(Qt::CaseInsensitive);
    return out + media;
}

void DriveList::fill()
{
    const QString was = Drive();
    const QSignalBlocker block(this);
    clear();
    const QString home = clean(QDir::homePath());
    for (const QString& d : Drives()) {
        QString text = d;
        QStyle::StandardPixmap icon = QStyle::SP_DriveHDIcon;
        if (d == home) {
            icon = QStyle::SP_DirHomeIcon;
        } else if (d != QLatin1String("/")) {
            const QString label = QStorageInfo(d).displayName();
            if (!label.isEmpty() && label != d)
                text += QStringLiteral("  [") + label + ']';
        }
        addItem(style()->standardIcon(icon), text, d);
    }
    if (!was.isEmpty())
        setCurrentIndex(std::max(0, indexOf(was)));
}

void DriveList::showPopup()
{
    // Media come and go: the list is read again each time it opens.
    fill();
    QComboBox::showPopup();
}

QString DriveList::Drive() const { return currentData().toString(); }

int DriveList::indexOf(const QString& path) const
{
    const QString p = clean(path);
    int best = -1;
    for (int i = 0; i < count(); ++i) {
        const QString d = itemData(i).toString();
        if (holds(d, p) && (best < 0 || d.size() > itemData(best).toString().size()))
            best = i;
    }
    return best;
}

void DriveList::ShowDriveOf(const QString& path)
{
    const QSignalBlocker block(this);
    setCurrentIndex(std::max(0, indexOf(path)));
    shown_ = Drive();
}

void DriveList::SetDrive(const QString& path)
{
    const QString was = Drive();
    ShowDriveOf(path);
    if (Drive() != was)
        emit Change();
}

DirList::DirList(QWidget* parent) : QTreeWidget(parent)
{
    setHeaderHidden(true);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setIndentation(14);
    setUniformRowHeights(true);
    connect(this, &QTreeWidget::itemActivated, this,
            [this](QTreeWidgetItem* item) { SetPath(item->data(0, Qt::UserRole).toString()); });
}

void DirList::SetPath(const QString& path)
{
    QString p = clean(path.isEmpty() ? QDir::homePath() : path);
    while (!QFileInfo(p).isDir() && p != QLatin1String("/"))
        p = clean(p + QStringLiteral("/.."));
    const bool changed = p != path_;
    path_ = p;
    fill();
    if (changed)
        emit Change();
}

void DirList::drawBranches(QPainter*, const QRect&, const QModelIndex&) const
{
    // Every folder shown is open already: no arrows to open or close them.
}

void DirList::fill()
{
    clear();
    const QIcon aperta = style()->standardIcon(QStyle::SP_DirOpenIcon);
    const QIcon chiusa = style()->standardIcon(QStyle::SP_DirClosedIcon);
    auto* item = new QTreeWidgetItem(this, {QStringLiteral("/")});
    item->setData(0, Qt::UserRole, QStringLiteral("/"));
    item->setIcon(0, aperta);
    QString sopra;
    for (const QString& parte : path_.split('/', Qt::SkipEmptyParts)) {
        sopra += '/' + parte;
        item = new QTreeWidgetItem(item, {parte});
        item->setData(0, Qt::UserRole, sopra);
        item->setIcon(0, aperta);
    }
    QTreeWidgetItem* corrente = item;
    const QDir dir(path_);
    for (const QString& nome : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase)) {
        auto* sotto = new QTreeWidgetItem(corrente, {nome});
        sotto->setData(0, Qt::UserRole, dir.filePath(nome));
        sotto->setIcon(0, chiusa);
    }
    expandAll();
    setCurrentItem(corrente);
    scrollToItem(corrente, QAbstractItemView::PositionAtTop);
}

FileList::FileList(QWidget* parent) : QListWidget(parent) {}

void FileList::SetPath(const QString& path)
{
    path_ = clean(path);
    Refresh();
    emit PathChange();
}

void FileList::SetPattern(const QString& pattern)
{
    pattern_ = pattern;
    Refresh();
    emit PatternChange();
}

void FileList::Refresh()
{
    clear();
    if (path_.isEmpty())
        return;
    QStringList filters;
    for (const QString& f : pattern_.split(';', Qt::SkipEmptyParts))
        filters << f.trimmed();
    addItems(QDir(path_).entryList(filters, QDir::Files, QDir::Name | QDir::IgnoreCase));
}

QString FileList::List(int index) const
{
    const QListWidgetItem* i = item(index);
    return i ? i->text() : QString();
}

namespace {
// The tick an item had when Click last fired for it.
constexpr int kTickNoto = Qt::UserRole + 1;
} // namespace

CheckList::CheckList(QWidget* parent) : QListWidget(parent)
{
    setSelectionMode(QAbstractItemView::SingleSelection);
    connect(this, &QListWidget::itemClicked, this, &CheckList::toggle);
    // Whoever changes a tick, Click follows once.
    connect(this, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        const int tick = item->checkState();
        if (item->data(kTickNoto).toInt() == tick)
            return;
        item->setData(kTickNoto, tick);
        emit Click();
    });
}

void CheckList::AddItem(const QString& text)
{
    auto* i = new QListWidgetItem(text);
    // The tick is ours to set: a click anywhere on the row changes it, not only on the box.
    i->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    i->setCheckState(Qt::Unchecked);
    i->setData(kTickNoto, static_cast<int>(Qt::Unchecked));
    addItem(i);
}

bool CheckList::Selected(int index) const
{
    const QListWidgetItem* i = item(index);
    return i && i->checkState() == Qt::Checked;
}

int CheckList::SelCount() const
{
    int n = 0;
    for (int i = 0; i < count(); ++i)
        n += Selected(i);
    return n;
}

void CheckList::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && currentItem()) {
        toggle(currentItem());
        return;
    }
    QListWidget::keyPressEvent(event);
}

void CheckList::toggle(QListWidgetItem* item)
{
    item->setCheckState(item->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
}

} // namespace platform
