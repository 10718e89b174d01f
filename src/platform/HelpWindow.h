#pragma once
// The program's help: Italian HTML pages shown in a browser window.
#include <QWidget>

class QTextBrowser;

namespace platform {

class HelpWindow final : public QWidget {
    Q_OBJECT
public:
    explicit HelpWindow(QWidget* parent = nullptr);
    // Shows the contents page (or a given page) and brings the window up.
    void ShowPage(const QString& page = QStringLiteral("index.html"));
    QString CurrentPage() const;

private:
    QTextBrowser* browser_;
};

} // namespace platform
