#include "ledger/FileBroker.h"

#include "ledger/Mappatura.h"
#include "platform/Failure.h"
#include "platform/Workbook.h"

#include <QFile>
#include <QFileInfo>

namespace ledger {

namespace {

// Larger than any broker's export: a bigger file is surely something else.
constexpr qint64 kMassimo = 64 * 1024 * 1024;

[[noreturn]] void illeggibile(const QString& path, const QString& perche)
{
    throw platform::Failure(QStringLiteral("Impossibile leggere il file %1: %2").arg(QFileInfo(path).fileName(), perche).toStdString());
}

} // namespace

FileBroker::FileBroker(const QString& path)
{
    if (path.endsWith(QStringLiteral(".xlsx"), Qt::CaseInsensitive)) {
        foglio_ = true;
        try {
            platform::Workbook wb(path);
            const QStringList fogli = wb.SheetNames();
            if (fogli.isEmpty())
                illeggibile(path, QStringLiteral("la cartella non ha fogli"));
            righe_ = TabellaDaFoglio(wb.Rows(fogli.front()));
        } catch (const platform::Failure&) {
            illeggibile(path, QStringLiteral("non è una cartella di lavoro leggibile"));
        }
    } else {
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly))
            illeggibile(path, f.errorString());
        if (f.size() > kMassimo)
            illeggibile(path, QStringLiteral("è troppo grande"));
        const QByteArray bytes = f.readAll();
        if (bytes.contains('\0') && !bytes.startsWith("\xFF\xFE") && !bytes.startsWith("\xFE\xFF"))
            illeggibile(path, QStringLiteral("non è un file di testo"));
        testo_ = platform::DecodificaTesto(bytes);
        Dividi(platform::IndovinaSeparatore(testo_));
    }
    if (righe_.isEmpty())
        illeggibile(path, QStringLiteral("è vuoto"));
}

void FileBroker::Dividi(QChar separatore)
{
    if (foglio_)
        return;
    separatore_ = separatore;
    righe_ = platform::DividiCampi(testo_, separatore);
}

} // namespace ledger
