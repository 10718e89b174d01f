#include "ledger/Import.h"

#include "ledger/Sequence.h"
#include "platform/CodePage.h"
#include "platform/Numbers.h"
#include "store/Database.h"

#include <QFile>
#include <QStringDecoder>

namespace ledger {

namespace {

// Windows files come in the Western code page; UTF-8 is taken when the bytes are valid UTF-8.
QString testo(const QByteArray& bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString t = utf8(bytes);
    if (!utf8.hasError())
        return t;
    return platform::TestoWindows1252(bytes);
}

bool cifre(QStringView s)
{
    for (const QChar c : s)
        if (c < u'0' || c > u'9')
            return false;
    return !s.isEmpty();
}

// A number the import does arithmetic with: an empty field can't take part.
double numero(const store::Recordset& r, const QString& campo)
{
    if (r.Field(campo).isNull())
        throw platform::Failure("Uso non valido di Null: " + campo.toStdString());
    return r.Number(campo);
}

} // namespace

QString TestoImportato(QString text) { return text.replace(u'\'', u'\u2019'); }

QString DataDaNomeFile(const QString& path)
{
    const qsizetype n = path.size();
    if (n < 12)
        throw platform::Failure("Chiamata di routine o argomento non validi");
    const QStringView p(path);
    const QStringView anno = p.mid(n - 12, 4), mese = p.mid(n - 8, 2), giorno = p.mid(n - 6, 2);
    const QDate data = cifre(anno) && cifre(mese) && cifre(giorno)
        ? QDate(anno.toInt(), mese.toInt(), giorno.toInt())
        : QDate();
    if (!data.isValid())
        throw platform::Failure("Tipo non corrispondente: \"" + QStringLiteral("%1 %2 %3").arg(giorno, mese, anno).toStdString() + "\"");
    return num::DateText(data);
}

bool LeggiRealTick(store::Database& dbExe, const QString& path)
{
    // One transaction for the file; what was staged before a fault stays, as row by row.
    store::Transaction tx(dbExe);
    try {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            throw platform::Failure("Impossibile leggere il file: " + path.toStdString());
        const QString contenuto = testo(file.readAll());
        const QList<QStringView> righe = QStringView(contenuto).split(u"\r\n");
        const QString data = DataDaNomeFile(path);
        // The heading and the element after the last CR LF are skipped.
        for (qsizetype i = 1; i + 1 < righe.size(); ++i) {
            const QList<QStringView> campi = righe[i].split(u',');
            if (campi.size() < 11)
                throw platform::Failure("Indice non compreso nell'intervallo");
            dbExe.Execute(QStringLiteral("INSERT INTO EseguitiTemp (Data,Tipo, Qta, Cod, Titolo, Prezzo, System) ")
                          + "VALUES ('" + data + "' ,'" + campi[4] + "'," + campi[5] + ",'" + campi[6] + "','" + "ND"
                          + "'," + campi[7] + ",'" + campi[9] + "')");
        }
    } catch (const std::exception&) {
        tx.Commit();
        return false;
    }
    tx.Commit();
    return true;
}

void PreparaEseguiti(store::Database& dbExe, const QList<EseguitoImportato>& eseguiti)
{
    store::Transaction tx(dbExe);
    for (const EseguitoImportato& e : eseguiti) {
        const auto testo = [](const QString& t) -> QString { return "'" + TestoImportato(t) + "'"; };
        dbExe.Execute(
            "INSERT INTO EseguitiTemp (Data, Tipo, System, Cod, Titolo, Qta, Prezzo, Importo, Errore, PrezzoOttimale)VALUES ('"
            + num::DateText(e.data) + "'," + testo(e.tipo) + "," + testo(e.system) + "," + testo(e.cod) + ","
            + testo(e.titolo) + "," + num::SqlText(e.qta) + "," + num::SqlText(e.prezzo) + ","
            + num::SqlText(e.qta * e.prezzo) + "," + testo(e.errore) + "," + num::SqlText(e.prezzoOttimale) + ")");
    }
    tx.Commit();
}

QString InsertRealTick(const store::Recordset& r)
{
    const double valore = numero(r, QStringLiteral("Prezzo"));
    const QString prezzo = num::SqlText(num::Round(valore, 4));
    const QString importo = num::SqlText(num::Round(valore * numero(r, QStringLiteral("qta")), 1));
    return QStringLiteral("INSERT INTO Eseguiti(Data,Tipo, Qta, Cod, Titolo, Prezzo, Importo, System, Errore, PrezzoOttimale) ")
        + "VALUES ('" + r.Text(QStringLiteral("Data")) + "' ,'" + r.Text(QStringLiteral("Tipo")) + "',"
        + num::CommaToPoint(r.Text(QStringLiteral("qta"))) + ",'" + r.Text(QStringLiteral("Cod")) + "','"
        + r.Text(QStringLiteral("Titolo")) + "'," + prezzo + "," + importo + ",'" + r.Text(QStringLiteral("System"))
        + "','" + "NE" + "'," + prezzo + ")";
}

QString InsertComeInAnteprima(const store::Recordset& r)
{
    const double qta = numero(r, QStringLiteral("Qta"));
    const double prezzo = numero(r, QStringLiteral("Prezzo"));
    const auto testo = [&r](const char* campo) { return TestoImportato(r.Text(QLatin1String(campo))); };
    return "INSERT INTO Eseguiti (Data, Tipo, System, Cod, Titolo, Qta, Prezzo, Importo, Errore, PrezzoOttimale)VALUES ('"
        + r.Text(QStringLiteral("Data")) + "','" + testo("Tipo") + "','" + testo("System") + "','" + testo("Cod") + "','"
        + testo("Titolo") + "'," + num::SqlText(qta) + "," + num::SqlText(prezzo) + "," + num::SqlText(qta * prezzo)
        + ",'" + testo("Errore") + "'," + num::SqlText(numero(r, QStringLiteral("PrezzoOttimale"))) + ")";
}

store::Recordset ImportaEseguiti::staged(store::Database& dbExe)
{
    store::Recordset r = dbExe.OpenRecordset(QStringLiteral("SELECT *  FROM EseguitiTemp"));
    if (r.RecordCount() == 0)
        return r;
    r.MoveLast();
    r.MoveFirst();
    if (inizio)
        inizio(r.RecordCount());
    return r;
}

bool ImportaEseguiti::tieni(const QString& errore)
{
    return errore.isEmpty() || (importareComunque && importareComunque("Errore nei dati " + errore + " importare comunque?"));
}

int ImportaEseguiti::Esegui(store::Database& dbExe)
{
    store::Recordset r = staged(dbExe);
    if (r.RecordCount() == 0)
        return 0;

    // All or nothing: a failure half way leaves Eseguiti as before the import.
    store::Transaction tx(dbExe);
    while (!r.Eof()) {
        // The undo record of this one row.
        dbExe.Execute(QStringLiteral("DELETE * FROM EseguitiBackup"));
        dbExe.Execute(QStringLiteral("INSERT INTO EseguitiBackup SELECT * FROM Eseguiti"));
        dbExe.Execute(inserimento(r));
        if (rigaInserita)
            rigaInserita();
        if (!tieni(ControlloSequenza(dbExe))) {
            dbExe.Execute(QStringLiteral("DELETE * FROM Eseguiti"));
            dbExe.Execute(QStringLiteral("INSERT INTO Eseguiti SELECT * FROM EseguitiBackup"));
        }
        r.MoveNext();
    }
    tx.Commit();
    return r.RecordCount();
}

int ImportaEseguiti::EseguiVeloce(store::Database& dbExe)
{
    store::Recordset r = staged(dbExe);
    if (r.RecordCount() == 0)
        return 0;

    store::Transaction tx(dbExe);
    SequenzaInMemoria sequenza(dbExe);
    while (!r.Eof()) {
        // What the undo record holds after the row-by-row import.
        if (r.AbsolutePosition() == r.RecordCount() - 1) {
            dbExe.Execute(QStringLiteral("DELETE * FROM EseguitiBackup"));
            dbExe.Execute(QStringLiteral("INSERT INTO EseguitiBackup SELECT * FROM Eseguiti"));
        }
        dbExe.Execute(inserimento(r));
        sequenza.AggiungiUltimo(dbExe);
        if (rigaInserita)
            rigaInserita();
        if (!tieni(sequenza.Controlla())) {
            dbExe.Execute("DELETE FROM Eseguiti WHERE ID = " + QString::number(sequenza.UltimoId()));
            sequenza.TogliUltimo();
        }
        r.MoveNext();
    }
    tx.Commit();
    return r.RecordCount();
}

} // namespace ledger
