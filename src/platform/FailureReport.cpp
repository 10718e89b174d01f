#include "platform/FailureReport.h"

#include "platform/Failure.h"
#include "store/DbError.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace platform {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {}

bool Application::notify(QObject* receiver, QEvent* event)
{
    if (failed_)
        return false;
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        QString where = QString::fromLatin1(receiver->metaObject()->className());
        if (!receiver->objectName().isEmpty())
            where += QStringLiteral(" \"") + receiver->objectName() + '"';
        for (QObject* p = receiver->parent(); p; p = p->parent()) {
            if (p->isWidgetType() && static_cast<QWidget*>(p)->isWindow() && !p->objectName().isEmpty()) {
                where = p->objectName() + QStringLiteral(" / ") + where;
                break;
            }
        }
        ReportFailure(std::current_exception(), where);
        return false;
    }
}

void Application::ReportFailure(const std::exception_ptr& error, const QString& where)
{
    if (failed_)
        return;
    const QString text = FailureText(error);
    ShowFailureReport(text, where);
    failed_ = true;
    QCoreApplication::exit(1);
}

QString FailureText(const std::exception_ptr& error)
{
    try {
        std::rethrow_exception(error);
    } catch (const store::DbError& e) {
        QString t = e.Message();
        if (!e.Statement().isEmpty())
            t += QStringLiteral("\n\nIstruzione:\n") + e.Statement();
        return t;
    } catch (const std::exception& e) {
        return QString::fromUtf8(e.what());
    } catch (...) {
        return QStringLiteral("Errore sconosciuto");
    }
}

void ShowFailureReport(const QString& text, const QString& where)
{
    // No parent: the window that was active may be one waiting to be deleted, and it
    // would take the report with it.
    QDialog dlg;
    dlg.setObjectName(QStringLiteral("FailureReport"));
    dlg.setWindowTitle(QApplication::applicationName() + QStringLiteral(" - errore"));
    dlg.setModal(true);
    auto* layout = new QVBoxLayout(&dlg);
    auto* head = new QHBoxLayout;
    auto* icon = new QLabel;
    icon->setPixmap(dlg.style()->standardIcon(QStyle::SP_MessageBoxCritical).pixmap(48, 48));
    auto* intro = new QLabel(QStringLiteral("<b>Si è verificato un errore non previsto.</b><br>"
                                            "Il programma verrà chiuso. Tutte le modifiche confermate "
                                            "sono già salvate nei file dei dati."));
    intro->setWordWrap(true);
    head->addWidget(icon, 0, Qt::AlignTop);
    head->addWidget(intro, 1);
    layout->addLayout(head);
    auto* whereLabel = new QLabel(QStringLiteral("Punto: ") + where);
    whereLabel->setObjectName(QStringLiteral("lab_Dove"));
    whereLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(whereLabel);
    auto* details = new QPlainTextEdit(text);
    details->setObjectName(QStringLiteral("txt_Errore"));
    details->setReadOnly(true);
    details->setMinimumSize(520, 140);
    layout->addWidget(details);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Close)->setText(QStringLiteral("Chiudi il programma"));
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dlg, &QDialog::reject);
    layout->addWidget(buttons);
    dlg.exec();
}

} // namespace platform
