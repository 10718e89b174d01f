// libFuzzer target for the day-file reader. An input is a file name on its first
// line (its last characters give the date) and the file's bytes after it.
#include "ledger/Import.h"
#include "store/Database.h"
#include "store/Delivered.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

struct Portfolio {
    QTemporaryDir dir;
    store::Database db;
    Portfolio()
    {
        const QString path = dir.filePath(QStringLiteral("fuzz.qvp"));
        store::CreateEmptyPortfolio(path);
        db.Open(path);
        // Speed over durability: the file lives for one run.
        db.ExecuteScript(QStringLiteral("PRAGMA synchronous=OFF"));
        db.Execute(QStringLiteral("INSERT INTO Eseguiti (Data, Tipo, System, Cod, Titolo, Qta, Prezzo, Importo, Errore, PrezzoOttimale) "
                                  "VALUES ('10/01/2003','Buy','DAY','ENI','ENI spa',100,10,1000,'NE',10)"));
    }
};

QString eseguiti(store::Database& db)
{
    const store::Recordset r = db.OpenRecordset(QStringLiteral("SELECT * FROM Eseguiti"));
    QString out;
    for (int i = 0; i < r.FieldCount(); ++i)
        out += r.Field(i).toString() + '|';
    return out + QString::number(r.RecordCount());
}

[[noreturn]] void broken(const char* what)
{
    std::fprintf(stderr, "invariant broken: %s\n", what);
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Portfolio* p = new Portfolio;
    static const QString before = eseguiti(p->db);

    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const qsizetype eol = input.indexOf('\n');
    QByteArray name = eol < 0 ? QByteArray() : input.left(std::min<qsizetype>(eol, 64));
    for (char& c : name)
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '.' && c != '_' && c != '-' && c != ' ')
            c = '_';
    const QByteArray content = eol < 0 ? input : input.mid(eol + 1);
    const QString path = p->dir.filePath(QStringLiteral("f") + QString::fromLatin1(name));
    {
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly) || f.write(content) != content.size())
            broken("input not written");
    }

    p->db.Execute(QStringLiteral("DELETE * FROM EseguitiTemp"));
    const bool letto = ledger::LeggiRealTick(p->db, path);
    QFile::remove(path);

    // Whatever the bytes: Eseguiti is never touched, at most one staged row per line
    // between the heading and the last element, each with the title and the date of the name.
    if (eseguiti(p->db) != before)
        broken("Eseguiti changed");
    const store::Recordset staged = p->db.OpenRecordset(QStringLiteral("SELECT Data, Titolo FROM EseguitiTemp"));
    if (staged.RecordCount() > std::max<qsizetype>(0, content.count("\r\n") - 1))
        broken("more rows than lines");
    if (staged.RecordCount() > 0) {
        const QString data = ledger::DataDaNomeFile(path);
        for (store::Recordset r = staged; !r.Eof(); r.MoveNext())
            if (r.Text(QStringLiteral("Titolo")) != QLatin1String("ND") || r.Text(QStringLiteral("Data")) != data)
                broken("staged row without the file's title or date");
    }
    (void)letto;
    return 0;
}
